#pragma once

#include <memory>
#include <string>
#include <vector>

#include "testing/ExternalScanFixture.h"
#include "testing/RecordingConnection.h"
#include "testing/RecordingLoop.h"

namespace zetaudiopluginhostui {

/// Runs one external scan whose requests the test itself answers, on the test's own thread, in place of the
/// transport. The scanners tell a port and wait for the file "end".
class ExternalScanStepsFixture : public ExternalScanFixture
{
  protected:
    using ValuePtr = zetcore::serialization::ValuePtr;

    ExternalScanStepsFixture();
    ~ExternalScanStepsFixture() override;

    /// Notes a step, and whether another thread would have to wait for the session's mutex meanwhile.
    void Note(const std::string& step);
    std::vector<std::string> TakeSteps() { return std::exchange(steps, {}); }
    /// Notes the trace's lines that contain the text.
    void NoteTraces(const std::string& text);

    void Answer(const ValuePtr& value) const { connection->Last().onResult(value, 1); }
    void AnswerOk() const;
    void AnswerInfo(const PluginLocator& plugin, int progress, int total, bool continues = true) const;
    /// Answers the first requests. The last one then is the question where the scanner is.
    void Begin() const;
    void RunPosted() { loop->PlainEventLoop::Run(std::chrono::steady_clock::time_point::max()); }
    /// Runs what is posted, and returns the last report.
    std::string LastReport();
    /// The methods of the requests, in order.
    std::vector<std::string> Sent() const;
    /// The arguments of the last BeginScanForPlugins.
    std::string ListSent() const;
    static std::vector<PluginLocator> AllBanned();

    const PluginLocator none{};
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
