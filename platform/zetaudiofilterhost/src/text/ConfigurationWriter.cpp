#include "text/ConfigurationText.h"

#include <array>

#include "model/LocatorText.h"
#include "text/XmlText.h"

namespace zetaudiofilterhost {

namespace {

/// In the order of `ModuleStatus`.
constexpr std::array<std::string_view, 6> statusWords{"working", "failed",    "notaplugin",
                                                      "skipped", "unscanned", "unreadable"};

constexpr std::string_view declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

void AppendLocatorPart(std::string& xml, const std::wstring& part)
{
    if (IsPlainLocatorPart(part))
        AppendXmlEscaped(xml, part);
    else
        AppendXmlEscaped(xml, EscapeLocatorPart(part));
}

void AppendLocator(std::string& xml, const PluginLocator& locator)
{
    xml += " locator=\"";
    AppendXmlEscaped(xml, TechnologyName(locator.GetTechnologyType()));
    xml += '|';
    AppendLocatorPart(xml, locator.GetPath());
    xml += '|';
    AppendLocatorPart(xml, locator.GetSubcomponent());
    xml += '"';
}

void AppendText(std::string& xml, std::string_view name, std::wstring_view value)
{
    if (!value.empty())
        AppendXmlAttribute(xml, name, value);
}

void AppendUnknownAttributes(std::string& xml, const Unknown& unknown)
{
    for (const auto& [name, value] : unknown.attributes)
        AppendXmlAttribute(xml, name, std::string_view(value));
}

void CloseElement(std::string& xml, std::string_view name, const Unknown& unknown)
{
    AppendUnknownAttributes(xml, unknown);
    if (unknown.children.empty()) {
        xml += "/>\n";
        return;
    }
    xml += '>';
    xml += unknown.children;
    xml += "</";
    xml += name;
    xml += ">\n";
}

void AppendModule(std::string& xml, const PluginModuleInfo& info, std::string_view element = "module")
{
    xml += "  <";
    xml += element;
    AppendLocator(xml, info.GetLocator());
    AppendText(xml, "name", info.GetName());
    AppendText(xml, "product", info.GetProduct());
    AppendText(xml, "vendor", info.GetVendor());
    AppendText(xml, "version", info.GetVersionString());
    AppendText(xml, "category", info.GetCategory());
    AppendText(xml, "uniqueid", info.GetUniqueId());
    if (info.GetNumericVersion() != 0)
        AppendXmlNumber(xml, "numericversion", info.GetNumericVersion());
    if (info.GetFileSize() != 0)
        AppendXmlNumber(xml, "size", info.GetFileSize());
    if (info.GetFileTime() != 0)
        AppendXmlNumber(xml, "time", info.GetFileTime());
    AppendXmlBoolean(xml, "enabled", info.IsEnabled());
    AppendXmlBoolean(xml, "effect", info.HasAnyNonSynthEffect());
    AppendXmlBoolean(xml, "synth", info.HasAnySynth());
    AppendXmlAttribute(xml, "status", StatusWord(info.GetStatus()));
    if (!info.GetReason().empty())
        AppendXmlAttribute(xml, "reason", std::string_view(info.GetReason()));
    if (info.IsScannedAlone())
        AppendXmlBoolean(xml, "alone", true);
    CloseElement(xml, element, info.GetUnknown());
}

void AppendChange(std::string& xml, const RegistryChange& change)
{
    if (change.info) {
        AppendModule(xml, *change.info, change.isAside ? "aside" : "module");
        return;
    }
    xml += change.choice ? "  <choice" : "  <removed";
    AppendLocator(xml, change.locator);
    if (change.choice)
        AppendXmlBoolean(xml, "enabled", change.choice->enabled);
    CloseElement(xml, change.choice ? "choice" : "removed",
                 change.choice ? change.choice->unknown : Unknown());
}

void AppendTechnology(std::string& xml, const TechnologyFolders& technology)
{
    xml += "  <technology";
    AppendXmlAttribute(xml, "name", TechnologyName(technology.type));
    AppendUnknownAttributes(xml, technology.unknown);
    xml += ">\n";
    for (const PluginFolder& folder : technology.folders) {
        xml += "    <folder path=\"";
        AppendLocatorPart(xml, folder.path);
        xml += '"';
        CloseElement(xml, "folder", folder.unknown);
    }
    xml += technology.unknown.children;
    xml += "  </technology>\n";
}

} // namespace

ConfigurationError::~ConfigurationError() = default;

std::string_view StatusWord(ModuleStatus status)
{
    return statusWords.at(static_cast<std::size_t>(status));
}

std::optional<ModuleStatus> StatusFromWord(std::string_view word)
{
    for (std::size_t index = 0; index < statusWords.size(); ++index)
        if (statusWords[index] == word)
            return static_cast<ModuleStatus>(index);
    return std::nullopt;
}

std::string WriteConfiguration(const Configuration& configuration)
{
    std::string xml(declaration);
    xml.reserve(1024 + 512 * configuration.modules.size());
    xml += "<audioplugins";
    AppendXmlAttribute(xml, "version", std::string_view(configuration.version));
    AppendUnknownAttributes(xml, configuration.unknown);
    xml += ">\n";
    for (const TechnologyFolders& technology : configuration.technologies)
        AppendTechnology(xml, technology);
    for (const InfoPtr& info : configuration.modules)
        AppendModule(xml, *info);
    for (const InfoPtr& info : configuration.asides)
        AppendModule(xml, *info, "aside");
    for (const RegistryChange& choice : configuration.choices)
        AppendChange(xml, choice);
    if (!configuration.unknown.children.empty()) {
        xml += configuration.unknown.children;
        xml += '\n';
    }
    xml += "</audioplugins>\n";
    return xml;
}

std::string WriteChanges(const std::vector<RegistryChange>& changes)
{
    std::string xml = "<changes";
    AppendXmlAttribute(xml, "version", configurationVersion);
    xml += ">\n";
    for (const RegistryChange& change : changes)
        AppendChange(xml, change);
    xml += "</changes>\n";
    return xml;
}

} // namespace zetaudiofilterhost
