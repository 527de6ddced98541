#pragma once

#include <TOLVMath/Export.h>

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TOLVGraphing {

/// The types that views put on a pasteboard, as media types.
inline constexpr std::string_view kPasteboardTypePDF = "application/pdf";
inline constexpr std::string_view kPasteboardTypePostScript = "application/postscript";
inline constexpr std::string_view kPasteboardTypeTIFF = "image/tiff";
inline constexpr std::string_view kPasteboardTypeEPS = "image/x-eps";
inline constexpr std::string_view kPasteboardTypeSVG = "image/svg+xml";
inline constexpr std::string_view kPasteboardTypePNG = "image/png";
inline constexpr std::string_view kPasteboardTypeText = "text/plain;charset=utf-8";

/// Where copied contents wait to be pasted: one set of contents in several types. Whoever copies declares the types, the richest first, and then sets the data of each. Used from one thread.
class TOLV_EXPORT Pasteboard {
public:
    /// The bytes of the contents in one type.
    using Data = std::vector<std::byte>;

    virtual ~Pasteboard();

    /// Begins new contents with these types, in this order and without data; what was there is gone. Of several equal ones the first counts.
    virtual void declareTypes(const std::vector<std::string>& types) = 0;
    /// Adds types behind the declared ones. Types that are there stay where they are.
    virtual void addTypes(const std::vector<std::string>& types) = 0;
    /// Sets the data (copied) of a declared type; false for a type that is not declared.
    virtual bool setDataForType(Data data, std::string_view type) = 0;
    /// Sets where the data of a declared type come from when somebody asks for them, which may be never; false for a type that is not declared. The function (copied; empty for none)
    /// is called at most once.
    virtual bool setProviderForType(std::function<Data()> provider, std::string_view type) = 0;
    /// All data are there: a host hands them to the desktop now. Contents that are declared and not finished may never be seen.
    virtual void finish() {}

    /// The pasteboard that copy commands go to, for the whole process: one in memory until a host installs its own. Never null.
    [[nodiscard]] static std::shared_ptr<Pasteboard> generalPasteboard();
    /// Installs a pasteboard (shared); null brings one in memory back.
    static void setGeneralPasteboard(std::shared_ptr<Pasteboard> pasteboard);
};

/// A pasteboard that keeps its contents in memory: for tests and for programs without a desktop, and for hosts to hand on.
class TOLV_EXPORT MemoryPasteboard : public Pasteboard {
public:
    void declareTypes(const std::vector<std::string>& types) override;
    void addTypes(const std::vector<std::string>& types) override;
    bool setDataForType(Data data, std::string_view type) override;
    bool setProviderForType(std::function<Data()> provider, std::string_view type) override;

    /// The declared types in order.
    [[nodiscard]] const std::vector<std::string>& types() const { return m_types; }
    /// The data of a type, fetched from its provider if need be; nothing when there are none. What a provider throws passes through, and it is not asked again.
    [[nodiscard]] std::optional<Data> dataForType(std::string_view type);

private:
    struct Entry {
        std::optional<Data> data;
        std::function<Data()> provider;
    };

    Entry* entryForType(std::string_view type);

    std::vector<std::string> m_types;
    std::map<std::string, Entry, std::less<>> m_entries;
};

} // namespace TOLVGraphing
