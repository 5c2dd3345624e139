#include "WorkerMessages.h"

#include <cstring>
#include <stdexcept>
#include <type_traits>

#include <zetcore/string/Utf.h>

namespace zetaudiofilterscan {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;
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

class Writer
{
  public:
    explicit Writer(Tag tag) { bytes.push_back(static_cast<char>(tag)); }

    void Number(std::uint32_t number)
    {
        char raw[sizeof number];
        std::memcpy(raw, &number, sizeof number);
        bytes.append(raw, sizeof number);
    }
    void Flag(bool flag) { bytes.push_back(flag ? '\1' : '\0'); }
    void Text(std::string_view text)
    {
        Number(static_cast<std::uint32_t>(text.size()));
        bytes.append(text);
    }
    /// As UTF-8, or, where that would not give the same units back, unit by unit.
    void Wide(std::wstring_view text)
    {
        const std::string utf8 = zetcore::string::UTF16to8(text);
        const bool isUtf8 = zetcore::string::UTF8to16(utf8) == text;
        Flag(isUtf8);
        if (isUtf8) {
            Text(utf8);
            return;
        }
        Number(static_cast<std::uint32_t>(text.size()));
        for (const wchar_t unit : text)
            Number(static_cast<std::uint32_t>(unit));
    }
    void Locator(const PluginLocator& locator)
    {
        Number(static_cast<std::uint32_t>(locator.GetTechnologyType()));
        Wide(locator.GetPath());
        Wide(locator.GetSubcomponent());
    }

    std::string bytes;
};

class Reader
{
  public:
    explicit Reader(std::string_view message) : rest(message) {}

    std::uint8_t Byte(const char* field) { return static_cast<std::uint8_t>(Take(1, field).front()); }
    std::uint32_t Number(const char* field)
    {
        std::uint32_t number = 0;
        std::memcpy(&number, Take(sizeof number, field).data(), sizeof number);
        return number;
    }
    bool Flag(const char* field)
    {
        const std::uint8_t byte = Byte(field);
        if (byte > 1)
            Wrong(field);
        return byte == 1;
    }
    std::string Text(const char* field) { return std::string(Take(Number(field), field)); }
    std::wstring Wide(const char* field)
    {
        if (Flag(field))
            return zetcore::string::UTF8to16(Text(field));
        std::wstring text;
        for (std::uint32_t left = Number(field); left > 0; --left)
            text += static_cast<wchar_t>(Number(field));
        return text;
    }
    PluginLocator Locator(const char* field)
    {
        const auto technology = static_cast<TechnologyType>(Number(field));
        std::wstring path = Wide(field);
        std::wstring subcomponent = Wide(field);
        if (path.empty() || zetaudiofilterhost::TechnologyName(technology).empty())
            Wrong(field);
        return {technology, std::move(path), std::move(subcomponent)};
    }
    ScanPhase Phase(const char* field)
    {
        const std::uint8_t byte = Byte(field);
        if (byte > static_cast<std::uint8_t>(ScanPhase::Unload))
            Wrong(field);
        return static_cast<ScanPhase>(byte);
    }
    void End() const
    {
        if (!rest.empty())
            throw std::runtime_error(std::to_string(rest.size()) + " bytes too many");
    }
    [[noreturn]] static void Wrong(const char* field)
    {
        throw std::runtime_error(std::string("wrong value: ") + field);
    }

  private:
    std::string_view Take(std::size_t size, const char* field)
    {
        if (rest.size() < size)
            throw std::runtime_error(std::string("cut off: ") + field);
        const std::string_view taken = rest.substr(0, size);
        rest.remove_prefix(size);
        return taken;
    }

    std::string_view rest;
};

std::string Encode(const WorkerSettings& settings)
{
    Writer writer(Tag::Settings);
    writer.Wide(settings.preferencesFolder);
    writer.Number(static_cast<std::uint32_t>(settings.traceVolume));
    writer.Flag(settings.options.disableShellSkipping);
    writer.Flag(settings.options.quickEffectScan);
    writer.Flag(settings.refuseNetwork);
    writer.Flag(settings.hideDisplay);
    return std::move(writer.bytes);
}

std::string Encode(const EntityRequest& request)
{
    Writer writer(Tag::Entity);
    writer.Number(request.number);
    writer.Locator(request.locator);
    return std::move(writer.bytes);
}

std::string Encode(const KnownModules& known)
{
    Writer writer(Tag::KnownModules);
    writer.Number(static_cast<std::uint32_t>(known.locators.size()));
    for (const PluginLocator& locator : known.locators)
        writer.Locator(locator);
    return std::move(writer.bytes);
}

std::string Encode(const KnownModulesQuestion&)
{
    return std::move(Writer(Tag::KnownModulesQuestion).bytes);
}

std::string Encode(const EntityAnswer& answer)
{
    Writer writer(Tag::Answer);
    writer.Number(answer.number);
    writer.Flag(answer.misbehaved);
    writer.Flag(answer.couldNotLoad);
    writer.bytes.push_back(static_cast<char>(answer.phase));
    writer.Text(answer.reason);
    writer.Text(answer.configuration);
    return std::move(writer.bytes);
}

std::string Encode(const WorkerTrace& trace)
{
    Writer writer(Tag::Trace);
    writer.Number(static_cast<std::uint32_t>(trace.level));
    writer.Text(trace.category);
    writer.Text(trace.text);
    return std::move(writer.bytes);
}

WorkerSettings ReadSettings(Reader& reader)
{
    WorkerSettings settings;
    settings.preferencesFolder = reader.Wide("preferences folder");
    settings.traceVolume = static_cast<int>(reader.Number("trace volume"));
    settings.options.disableShellSkipping = reader.Flag("disable shell skipping");
    settings.options.quickEffectScan = reader.Flag("quick effect scan");
    settings.refuseNetwork = reader.Flag("refuse network");
    settings.hideDisplay = reader.Flag("hide display");
    return settings;
}

KnownModules ReadKnownModules(Reader& reader)
{
    KnownModules known;
    for (std::uint32_t left = reader.Number("number of known modules"); left > 0; --left)
        known.locators.push_back(reader.Locator("known module"));
    return known;
}

EntityRequest ReadRequest(Reader& reader)
{
    EntityRequest request;
    request.number = reader.Number("entity number");
    if (request.number == 0)
        Reader::Wrong("entity number");
    request.locator = reader.Locator("locator");
    return request;
}

EntityAnswer ReadAnswer(Reader& reader)
{
    EntityAnswer answer;
    answer.number = reader.Number("entity number");
    answer.misbehaved = reader.Flag("misbehaved");
    answer.couldNotLoad = reader.Flag("could not load");
    answer.phase = reader.Phase("phase");
    answer.reason = reader.Text("reason");
    answer.configuration = reader.Text("configuration");
    return answer;
}

WorkerTrace ReadTrace(Reader& reader)
{
    WorkerTrace trace;
    trace.level = static_cast<int>(reader.Number("level"));
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
    Reader reader(message);
    WorkerCommand command;
    switch (static_cast<Tag>(reader.Byte("kind"))) {
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
        Reader::Wrong("kind");
    }
    reader.End();
    return command;
}

WorkerReport DecodeReport(std::string_view message)
{
    Reader reader(message);
    WorkerReport report;
    switch (static_cast<Tag>(reader.Byte("kind"))) {
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
        Reader::Wrong("kind");
    }
    reader.End();
    return report;
}

ScanPhase PhaseFromNumber(std::uint32_t number) noexcept
{
    return number <= static_cast<std::uint32_t>(ScanPhase::Unload) ? static_cast<ScanPhase>(number)
                                                                   : ScanPhase::None;
}

} // namespace zetaudiofilterscan
