#pragma once

#include <TOLVGraphing/platform/ui/Pasteboard.h>
#include <TOLVMath/Export.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace TOLVGraphing {

/// The application's clipboard. Contents are collected and go to the clipboard as a whole when they are finished; data that a provider makes are made when another program asks for them, in the thread of the application.
/// Where a clipboard manager runs, the contents outlive the program, which hands all of them over when the application is about to quit.
class TOLV_EXPORT QtPasteboard final : public Pasteboard {
public:
    void declareTypes(const std::vector<std::string>& types) override;
    void addTypes(const std::vector<std::string>& types) override;
    bool setDataForType(Data data, std::string_view type) override;
    bool setProviderForType(std::function<Data()> provider, std::string_view type) override;
    void finish() override;

private:
    /// What is being collected; null when nothing is.
    std::shared_ptr<MemoryPasteboard> m_contents;
};

} // namespace TOLVGraphing
