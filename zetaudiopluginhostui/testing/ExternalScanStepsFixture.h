#pragma once

#include <memory>
#include <string>
#include <vector>

#include "testing/ExternalScanFixture.h"
#include "testing/RecordingConnection.h"
#include "testing/RecordingLoop.h"

namespace zetaudiopluginhostui {

/// One external scan whose requests the test answers itself, on its own thread, in the place of the
/// transport. Its scanners tell a port and wait for the file "end".
class ExternalScanStepsFixture : public ExternalScanFixture
{
  protected:
    using ValuePtr = zetcore::serialization::ValuePtr;

    ExternalScanStepsFixture();
    ~ExternalScanStepsFixture() override;

    /// A step, and whether another thread would have had to wait for the session's mutex meanwhile.
    void Note(const std::string& step);
    std::vector<std::string> TakeSteps() { return std::exchange(steps, {}); }
    /// Notes the trace's lines that contain the text.
    void NoteTraces(const std::string& text);

    void Answer(const ValuePtr& value) const { connection->Last().onResult(value, 1); }
    void AnswerOk() const;
    void AnswerInfo(const PluginLocator& plugin, int progress, int total, bool continues = true) const;
    /// Until the scanner is asked where it is.
    void Begin() const;
    void RunPosted() { loop->PlainEventLoop::Run(std::chrono::steady_clock::time_point::max()); }
    /// Once what is posted has run.
    std::string LastReport();
    /// The methods, in order.
    std::vector<std::string> Sent() const;
    /// The arguments of the last BeginScanForPlugins.
    std::string ListSent() const;
    static std::vector<PluginLocator> AllBanned();

    const PluginLocator none;
    const PluginLocator a = Plugin("a.so");
    const PluginLocator b = Plugin("b.so");
    const PluginLocator c = Plugin("c.so");
    const PluginLocator d = Plugin("d.so");
    /// The scan owns it.
    RecordingConnection* connection = nullptr;
    std::shared_ptr<RecordingLoop> recordingLoop;

  private:
    std::vector<std::string> steps;
};

} // namespace zetaudiopluginhostui
