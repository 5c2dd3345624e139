#include "testing/ExternalScanStepsFixture.h"

#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetcore/debug/Trace.h>
#include <zetmarshal/JsonValue.h>

namespace zetaudiopluginhostui {

using zetaudiopluginhost::BannedPluginManager;

ExternalScanStepsFixture::ExternalScanStepsFixture()
{
    const auto note = [this](const std::string& step) { Note(step); };
    auto recording = std::make_unique<RecordingConnection>(note);
    connection = recording.get();
    scan = std::make_shared<ExternalAudioPluginScan>(PortWait(), std::move(recording));
    recordingLoop = std::make_shared<RecordingLoop>(note);
    loop = recordingLoop;
    zetcore::threads::RegisterMainThread(loop);
    for (int number = 1; number <= 5; ++number)
        Script(number, {"word " + std::to_string(4710 + number), "touch started", "wait end"});
}

ExternalScanStepsFixture::~ExternalScanStepsFixture()
{
    Touch("end");
    onReport = {};
    connection->onSend = {};
    connection->onClose = {};
    scan->StopScan();
    // No more steps may be noted.
    scan.reset();
    zetcore::threads::RegisterMainThread(nullptr);
    zetcore::debug::SetTraceSink({});
}

void ExternalScanStepsFixture::Note(const std::string& step)
{
    steps.push_back(step + (ExternalAudioPluginScanAccess::MutexIsHeld(*scan) ? " held" : " free"));
}

void ExternalScanStepsFixture::NoteTraces(const std::string& text)
{
    zetcore::debug::SetMasterTraceVolume(6);
    zetcore::debug::SetTraceSink([this, text](int, std::string_view, std::string_view line) {
        if (line.find(text) != line.npos)
            Note("trace");
    });
}

void ExternalScanStepsFixture::AnswerOk() const
{
    Answer(zetmarshal::FromJson("{}"));
}

void ExternalScanStepsFixture::AnswerInfo(const PluginLocator& plugin, int progress, int total,
                                          bool continues) const
{
    Answer(zetmarshal::FromJson(Info(plugin, progress, total, continues).substr(sizeof "reply")));
}

void ExternalScanStepsFixture::Begin() const
{
    AnswerOk();
    AnswerOk();
}

std::string ExternalScanStepsFixture::LastReport()
{
    RunPosted();
    return reports.empty() ? "none" : reports.back();
}

std::vector<std::string> ExternalScanStepsFixture::Sent() const
{
    std::vector<std::string> methods;
    for (const auto& request : connection->requests)
        methods.push_back(request.method);
    return methods;
}

std::string ExternalScanStepsFixture::ListSent() const
{
    for (auto request = connection->requests.rbegin(); request != connection->requests.rend(); ++request)
        if (request->method == "BeginScanForPlugins")
            return request->arguments;
    return "none";
}

std::vector<zetaudiofilterhost::PluginLocator> ExternalScanStepsFixture::AllBanned()
{
    const auto& banned = *BannedPluginManager::GetInstance();
    return {banned.BannedBegin(), banned.BannedEnd()};
}

} // namespace zetaudiopluginhostui
