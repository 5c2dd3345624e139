#include "WorkerMessages.h"

#include <memory>

#include <zetaudiofilterhost/PluginModuleInfo.h>

#include "MessageBytes.h"

namespace zetaudiofilterscan {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiopluginhost::PluginFailure;
using zetaudiopluginhost::ScanPhase;

namespace {

enum class Tag : std::uint8_t
{
    Settings = 'S',
    Entity = 'E',
    Answer = 'A',
    Trace = 'T',
    KnownModules = 'K',
    KnownModulesQuestion = 'Q',
};

MessageWriter Begin(Tag tag)
{
    MessageWriter writer;
    writer.Choice(tag);
    return writer;
}

/// Writes the fields that a scan finds. The registry and the engine add the others later.
void Write(MessageWriter& writer, const PluginModuleInfo& info)
{
    writer.Locator(info.GetLocator());
    writer.Wide(info.GetName());
    writer.Wide(info.GetProduct());
    writer.Wide(info.GetVendor());
    writer.Wide(info.GetVersionString());
    writer.Wide(info.GetCategory());
    writer.Wide(info.GetUniqueId());
    writer.Integer(info.GetNumericVersion());
    writer.Integer(info.GetFileSize());
    writer.Integer(info.GetFileTime());
    writer.Flag(info.HasAnyNonSynthEffect());
    writer.Flag(info.HasAnySynth());
    writer.Choice(info.GetStatus());
    writer.Text(info.GetReason());
}

std::shared_ptr<PluginModuleInfo> ReadRecord(MessageReader& reader)
{
    auto info = std::make_shared<PluginModuleInfo>(reader.Locator("record"));
    info->SetName(reader.Wide("name"));
    info->SetProduct(reader.Wide("product"));
    info->SetVendor(reader.Wide("vendor"));
    info->SetVersionString(reader.Wide("version"));
    info->SetCategory(reader.Wide("category"));
    info->SetUniqueId(reader.Wide("unique id"));
    info->SetNumericVersion(reader.Integer<std::int64_t>("numeric version"));
    const auto size = reader.Integer<std::uint64_t>("file size");
    info->SetFileStamp(size, reader.Integer<std::int64_t>("file time"));
    info->SetHasAnyNonSynthEffect(reader.Flag("has an effect"));
    info->SetHasAnySynth(reader.Flag("has a synth"));
    info->SetStatus(reader.Choice("status", ModuleStatus::Unreadable));
    info->SetReason(reader.Text("record's reason"));
    return info;
}

/// Writes what a worker can say of itself. The supervisor adds the rest.
void Write(MessageWriter& writer, const PluginFailure& failure)
{
    writer.Choice(failure.kind);
    writer.Choice(failure.phase);
    writer.Size(failure.details.size());
    for (const std::string& detail : failure.details)
        writer.Text(detail);
}

PluginFailure ReadFailure(MessageReader& reader)
{
    PluginFailure failure;
    failure.kind = reader.Choice("kind of failure", PluginFailure::lastKind);
    failure.phase = reader.Choice("phase", ScanPhase::Unload);
    for (std::uint32_t left = reader.Size("number of details"); left > 0; --left)
        failure.details.push_back(reader.Text("detail"));
    return failure;
}

std::string Encode(const WorkerSettings& settings)
{
    MessageWriter writer = Begin(Tag::Settings);
    writer.Wide(settings.preferencesFolder);
    writer.Integer(static_cast<std::int32_t>(settings.traceVolume));
    writer.Flag(settings.options.disableShellSkipping);
    writer.Flag(settings.options.quickEffectScan);
    writer.Flag(settings.refuseNetwork);
    writer.Flag(settings.refuseWriting);
    writer.Size(settings.writable.size());
    for (const std::wstring& path : settings.writable)
        writer.Wide(path);
    writer.Flag(settings.hideDisplay);
    return writer.Take();
}

std::string Encode(const EntityRequest& request)
{
    MessageWriter writer = Begin(Tag::Entity);
    writer.Integer(request.number);
    writer.Locator(request.locator);
    writer.Flag(request.onOneProcessor);
    return writer.Take();
}

std::string Encode(const KnownModules& known)
{
    MessageWriter writer = Begin(Tag::KnownModules);
    writer.Size(known.locators.size());
    for (const PluginLocator& locator : known.locators)
        writer.Locator(locator);
    return writer.Take();
}

std::string Encode(const KnownModulesQuestion&)
{
    return Begin(Tag::KnownModulesQuestion).Take();
}

std::string Encode(const EntityAnswer& answer)
{
    MessageWriter writer = Begin(Tag::Answer);
    writer.Integer(answer.number);
    writer.Flag(answer.outcome.misbehaved);
    writer.Flag(answer.outcome.couldNotLoad);
    Write(writer, answer.outcome.failure);
    writer.Size(answer.outcome.infos.size());
    for (const auto& info : answer.outcome.infos)
        Write(writer, *info);
    return writer.Take();
}

std::string Encode(const WorkerTrace& trace)
{
    MessageWriter writer = Begin(Tag::Trace);
    writer.Integer(static_cast<std::int32_t>(trace.level));
    writer.Text(trace.category);
    writer.Text(trace.text);
    return writer.Take();
}

WorkerSettings ReadSettings(MessageReader& reader)
{
    WorkerSettings settings;
    settings.preferencesFolder = reader.Wide("preferences folder");
    settings.traceVolume = reader.Integer<std::int32_t>("trace volume");
    settings.options.disableShellSkipping = reader.Flag("disable shell skipping");
    settings.options.quickEffectScan = reader.Flag("quick effect scan");
    settings.refuseNetwork = reader.Flag("refuse network");
    settings.refuseWriting = reader.Flag("refuse writing");
    for (std::uint32_t left = reader.Size("number of writable folders"); left > 0; --left)
        settings.writable.push_back(reader.Wide("writable folder"));
    settings.hideDisplay = reader.Flag("hide display");
    return settings;
}

KnownModules ReadKnownModules(MessageReader& reader)
{
    KnownModules known;
    for (std::uint32_t left = reader.Size("number of known modules"); left > 0; --left)
        known.locators.push_back(reader.Locator("known module"));
    return known;
}

EntityRequest ReadRequest(MessageReader& reader)
{
    EntityRequest request;
    request.number = reader.Integer<std::uint32_t>("entity number");
    if (request.number == 0)
        MessageReader::Wrong("entity number");
    request.locator = reader.Locator("locator");
    request.onOneProcessor = reader.Flag("on one processor");
    return request;
}

EntityAnswer ReadAnswer(MessageReader& reader)
{
    EntityAnswer answer;
    answer.number = reader.Integer<std::uint32_t>("entity number");
    answer.outcome.misbehaved = reader.Flag("misbehaved");
    // The flag means something only for a plug-in that misbehaved.
    answer.outcome.couldNotLoad = reader.Flag("could not load") && answer.outcome.misbehaved;
    answer.outcome.failure = ReadFailure(reader);
    for (std::uint32_t left = reader.Size("number of records"); left > 0; --left)
        answer.outcome.infos.push_back(ReadRecord(reader));
    return answer;
}

WorkerTrace ReadTrace(MessageReader& reader)
{
    WorkerTrace trace;
    trace.level = reader.Integer<std::int32_t>("level");
    trace.category = reader.Text("category");
    trace.text = reader.Text("text");
    return trace;
}

} // namespace

std::string EncodeCommand(const WorkerCommand& command)
{
    return std::visit([](const auto& message) { return Encode(message); }, command);
}

std::string EncodeReport(const WorkerReport& report)
{
    return std::visit([](const auto& message) { return Encode(message); }, report);
}

WorkerCommand DecodeCommand(std::string_view message)
{
    MessageReader reader(message);
    WorkerCommand command;
    switch (static_cast<Tag>(reader.Integer<std::uint8_t>("kind"))) {
    case Tag::Settings:
        command = ReadSettings(reader);
        break;
    case Tag::Entity:
        command = ReadRequest(reader);
        break;
    case Tag::KnownModules:
        command = ReadKnownModules(reader);
        break;
    default:
        MessageReader::Wrong("kind");
    }
    reader.End();
    return command;
}

WorkerReport DecodeReport(std::string_view message)
{
    MessageReader reader(message);
    WorkerReport report;
    switch (static_cast<Tag>(reader.Integer<std::uint8_t>("kind"))) {
    case Tag::Answer:
        report = ReadAnswer(reader);
        break;
    case Tag::Trace:
        report = ReadTrace(reader);
        break;
    case Tag::KnownModulesQuestion:
        report = KnownModulesQuestion();
        break;
    default:
        MessageReader::Wrong("kind");
    }
    reader.End();
    return report;
}

ScanPhase PhaseFromNumber(std::uint32_t number) noexcept
{
    return number <= static_cast<std::uint32_t>(ScanPhase::Unload) ? static_cast<ScanPhase>(number)
                                                                   : ScanPhase::Unknown;
}

} // namespace zetaudiofilterscan
