#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetcore/threads/PlainEventLoop.h>
#include <zettesting/HostFixture.h>

namespace zetaudiopluginhostui {

/// A host with an empty registry and lists, an event loop, and a fake scanner in its executable folder that
/// does what `Script` says (see FakeScanner.cpp).
class ScanFixture : public zettesting::HostFixture
{
  protected:
    using PluginLocator = zetaudiofilterhost::PluginLocator;

    ScanFixture();
    ~ScanFixture() override;

    /// The scanner of this number does what the lines say. 1 is the scanner that is launched first.
    void Script(int number, const std::vector<std::string>& lines);
    /// The first line is the trace volume that the scanner found. The others are the requests that it got.
    std::vector<std::string> Log(int number) const;
    int Launches() const;
    void Touch(const std::string& name) const;
    /// Waits for a file in the scripts' folder; fails the test when the time is up.
    void WaitForFile(const std::string& name) const;
    bool ScannersRun() const { return RunningScanners() > 0; }
    int RunningScanners() const;
    /// Waits until no scanner of this test runs any more.
    bool ScannersEnd() const;

    /// Runs posted calls until the condition holds. Fails the test after a long time.
    void RunUntil(const std::function<bool()>& condition);
    /// Waits in the same way, but runs no posted calls.
    static void WaitUntil(const std::function<bool()>& condition);

    /// The line of a script that answers GetScanInfo.
    static std::string Info(const PluginLocator& plugin, int progress, int total, bool continues,
                            const std::string& subcomponent = {});
    PluginLocator Plugin(const std::string& name) const;
    /// The text as JSON, as it stands in the fake scanner's log.
    static std::string JsonText(std::wstring_view text);
    /// The locator's text as JSON.
    static std::string Quoted(const PluginLocator& plugin);
    /// The line of a script that answers ScanOneEntity with a result for this plug-in.
    static std::string Result(const PluginLocator& plugin, const std::wstring& name);

    /// The session's trace without level and category, from whatever thread.
    std::vector<std::string> Traced() const;
    /// True when any category's line holds the text.
    bool AnyTraced(const std::string& text) const;

    std::filesystem::path scripts;
    std::shared_ptr<zetcore::threads::PlainEventLoop> loop =
        std::make_shared<zetcore::threads::PlainEventLoop>();

  private:
    struct LockedTrace
    {
        mutable std::mutex mutex;
        std::vector<std::string> lines;
        std::vector<std::string> all;
    };
    std::shared_ptr<LockedTrace> lockedTrace = std::make_shared<LockedTrace>();
    std::unique_ptr<zettesting::ScopedEnvironment> environment;
};

} // namespace zetaudiopluginhostui
