#pragma once

#include <TOLVGraphing/platform/ui/Pasteboard.h>
#include <TOLVMath/Export.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace TOLVGraphing {

/// The application's clipboard. Contents are collected and go to the clipboard as a whole when they are finished; data that a provider makes are made when another program asks for them, in the thread of the application.
/// Where a clipboard manager runs, the contents outlive the program, which hands all of them over when the application is about to quit and waits for it, 10 seconds at most. A provider that throws gives nothing, with a line in the log.
///
/// installQtServices makes one the general pasteboard; a host with a clipboard of its own installs that one afterwards (Pasteboard::setGeneralPasteboard). Needs a QGuiApplication and is used from its thread.
class TOLV_EXPORT QtPasteboard final : public Pasteboard {
public:
    /// Begins new contents with these types, in this order and without data; what is on the clipboard stays there until they are finished.
    void declareTypes(const std::vector<std::string>& types) override;
    /// Adds types behind the declared ones. Does nothing before `declareTypes` and after `finish`.
    void addTypes(const std::vector<std::string>& types) override;
    /// Sets the data of a declared type; false for a type that is not declared, and before `declareTypes` and after `finish`.
    bool setDataForType(Data data, std::string_view type) override;
    /// Sets where the data of a declared type come from when another program asks for them; false as above. The function is called at most once, and kept as long as the contents are on the clipboard.
    bool setProviderForType(std::function<Data()> provider, std::string_view type) override;
    /// Replaces the clipboard's contents by those collected; does nothing where none are. Text is also offered under the name text/plain, which toolkits look for.
    void finish() override;

private:
    /// What is being collected; null when nothing is.
    std::shared_ptr<MemoryPasteboard> m_contents;
};

} // namespace TOLVGraphing
