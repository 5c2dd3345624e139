#include "session/WindowSettings.h"

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <stdexcept>

#include <pugixml.hpp>

#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/string/ParseNumber.h>

#include "session/HostSession.h"

namespace zetaudiopluginmanager {

namespace {

using zetaudiopluginhostui::AudioPluginManagerSettings;
using zetcore::filesupport::File;
using zetcore::filesupport::FileUtils;

constexpr const char* rootName = "managerwindow";
constexpr const char* controlName = "control";
constexpr std::uint64_t maxFileSize = std::uint64_t{1} << 20;
/// The largest size of a window. No desktop is larger, and no window system takes larger windows.
constexpr std::int64_t farthest = 1'000'000;
constexpr std::int64_t largest = 32'767;

/// Reads one text. Each error names its place in the text.
class Reader
{
  public:
    explicit Reader(const std::string& settingsText) : text(settingsText)
    {
        const pugi::xml_parse_result result = document.load_buffer(text.data(), text.size());
        if (!result)
            Fail(result.offset, result.description());
        if (std::string(Root().name()) != rootName)
            Fail(Root().offset_debug(), std::string("the root element is not ") + rootName);
    }

    pugi::xml_node Root() const { return document.document_element(); }

    /// Leaves the value alone when the element lacks the attribute.
    void Read(const char* element, const char* attribute, bool& value) const
    {
        const pugi::xml_attribute found = Root().child(element).attribute(attribute);
        if (!found)
            return;
        const std::string written = found.value();
        if (written != "true" && written != "false")
            FailAt(element, attribute, written, "is neither true nor false");
        value = written == "true";
    }

    template<typename Number>
    void Read(const char* element, const char* attribute, Number& value, std::int64_t least,
              std::int64_t most) const
    {
        const pugi::xml_attribute found = Root().child(element).attribute(attribute);
        if (!found)
            return;
        const std::string written = found.value();
        const auto number = zetcore::string::ParseNumber<std::int64_t>(written);
        if (!number || *number < least || *number > most)
            FailAt(element, attribute, written, "is no number that fits");
        value = static_cast<Number>(*number);
    }

  private:
    [[noreturn]] void FailAt(const char* element, const char* attribute, const std::string& written,
                             const char* problem) const
    {
        Fail(Root().child(element).offset_debug(), std::string("element ") + element + ", attribute " +
                                                       attribute + ": \"" + written + "\" " + problem);
    }
    [[noreturn]] void Fail(std::ptrdiff_t offset, const std::string& problem) const
    {
        const auto end = text.begin() + std::clamp<std::ptrdiff_t>(offset, 0, std::ssize(text));
        throw std::runtime_error("line " + std::to_string(1 + std::count(text.begin(), end, '\n')) + ": " +
                                 problem);
    }

    const std::string& text;
    pugi::xml_document document;
};

/// Throws `file_exception` for a file that cannot be opened.
WindowSettings ReadOrKeepAside(const File& file)
{
    const std::string text = FileUtils::ReadFile(file, maxFileSize);
    try {
        return WindowSettingsFromText(text);
    } catch (const std::runtime_error& damage) {
        Say(file.FullPathUTF8() + ", " + damage.what());
        FileUtils::KeepAside(file);
    }
    return {};
}

} // namespace

std::string WindowSettingsToText(const WindowSettings& settings)
{
    const AudioPluginManagerSettings& manager = settings.manager;
    pugi::xml_document document;
    pugi::xml_node declaration = document.append_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
    declaration.append_attribute("encoding") = "UTF-8";
    pugi::xml_node root = document.append_child(rootName);
    root.append_attribute("version") = "1.0";
    root.append_child("scan").append_attribute("rescanexisting") = manager.rescanExisting;
    pugi::xml_node sort = root.append_child("sort");
    sort.append_attribute("column") = manager.sortColumn;
    sort.append_attribute("ascending") = manager.sortAscending;
    pugi::xml_node window = root.append_child("window");
    window.append_attribute("left") = manager.dialogBounds.left;
    window.append_attribute("top") = manager.dialogBounds.top;
    window.append_attribute("width") = manager.dialogBounds.width;
    window.append_attribute("height") = manager.dialogBounds.height;
    for (const auto& [key, value] : settings.controls) {
        pugi::xml_node control = root.append_child(controlName);
        control.append_attribute("key") = key.c_str();
        control.append_attribute("value") = value.c_str();
    }
    std::ostringstream text;
    document.save(text, "  ");
    return text.str();
}

WindowSettings WindowSettingsFromText(const std::string& text)
{
    const Reader reader(text);
    WindowSettings settings;
    AudioPluginManagerSettings& manager = settings.manager;
    reader.Read("scan", "rescanexisting", manager.rescanExisting);
    reader.Read("sort", "column", manager.sortColumn, 0, UINT32_MAX);
    reader.Read("sort", "ascending", manager.sortAscending);
    reader.Read("window", "left", manager.dialogBounds.left, -farthest, farthest);
    reader.Read("window", "top", manager.dialogBounds.top, -farthest, farthest);
    reader.Read("window", "width", manager.dialogBounds.width, 0, largest);
    reader.Read("window", "height", manager.dialogBounds.height, 0, largest);
    for (const pugi::xml_node control : reader.Root().children(controlName)) {
        if (const std::string key = control.attribute("key").value(); !key.empty())
            settings.controls[key] = control.attribute("value").value();
    }
    return settings;
}

File WindowSettingsFile()
{
    return {zetcore::filesupport::Dir::PrefDir(), L"PluginManagerWindow.xml"};
}

WindowSettings LoadWindowSettings()
{
    const File file = WindowSettingsFile();
    try {
        return file.Exists() ? ReadOrKeepAside(file) : WindowSettings();
    } catch (const zetcore::filesupport::file_exception& error) {
        Say(error.what());
    }
    return {};
}

void SaveWindowSettings(const AudioPluginManagerSettings& manager, const ControlValues& controls)
{
    const File file = WindowSettingsFile();
    // Another window of the program may have written the file since this one has read it.
    WindowSettings settings = file.Exists() ? ReadOrKeepAside(file) : WindowSettings();
    settings.manager = manager;
    for (const auto& [key, value] : controls)
        settings.controls[key] = value;
    const std::string text = WindowSettingsToText(settings);
    if (!file.Exists() || FileUtils::ReadFile(file, maxFileSize) != text)
        FileUtils::SimpleWriteStringToFile(file.FullPath(), text);
}

} // namespace zetaudiopluginmanager
