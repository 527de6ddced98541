#pragma once

#include <TOLVGraphing/platform/ui/Pasteboard.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace TOLVGraphing {

/// The application's clipboard. Contents are collected and go to the clipboard as a whole when they are finished; data that a provider makes are made when another program asks for them, in the thread of the application.
/// Where a clipboard manager runs, the contents outlive the program, which hands all of them over when the application is about to quit. A provider that throws gives nothing, with a line in the log.
///
/// installQtServices makes one the general pasteboard; a host with a clipboard of its own installs that one afterwards (Pasteboard::setGeneralPasteboard). Needs a QGuiApplication and is used from its thread.
class QtPasteboard final : public Pasteboard {
public:
    /// Begins new contents; what is on the clipboard stays there until they are finished.
    void declareTypes(const std::vector<std::string>& types) override;
    /// Does nothing before `declareTypes` and after `finish`.
    void addTypes(const std::vector<std::string>& types) override;
    /// False also before `declareTypes` and after `finish`.
    bool setDataForType(Data data, std::string_view type) override;
    /// False also before `declareTypes` and after `finish`. The function is kept as long as the contents are on the clipboard.
    bool setProviderForType(std::function<Data()> provider, std::string_view type) override;
    /// Replaces the clipboard's contents by those collected. Text is also offered under the name text/plain, which toolkits look for.
    void finish() override;

private:
    /// What is being collected; null when nothing is.
    std::shared_ptr<MemoryPasteboard> m_contents;
};

} // namespace TOLVGraphing
