#include "testing/DialogArchive.h"

#include <sstream>
#include <stdexcept>

#include <pugixml.hpp>
#include <zetui/archiveddialog/UI_ArchivedDialog.h>

#include "dialog/PluginManagerIds.h"
#include "module/ModuleResources.h"

namespace zetaudiopluginhostui {

namespace {

constexpr char archiveType[] = "xml";

pugi::xml_node PairIn(const pugi::xml_node& list, const std::string& key)
{
    for (const pugi::xml_node pair : list.children("prop.pair")) {
        if (key == pair.child_value("key"))
            return pair;
    }
    return {};
}

pugi::xml_node ValueOf(const pugi::xml_node& pair)
{
    return pair.child("key").next_sibling();
}

/// Finds the property in any section of the node.
pugi::xml_node PropertyOf(const pugi::xml_node& node, const std::string& key)
{
    for (const pugi::xml_node section : ValueOf(PairIn(node, "sections")).children("prop.pair")) {
        if (const pugi::xml_node pair = PairIn(ValueOf(section), key))
            return pair;
    }
    return {};
}

void SetValue(pugi::xml_node pair, const char* type, const std::string& text)
{
    pair.remove_child(ValueOf(pair));
    pugi::xml_node value = pair.append_child(type);
    if (!text.empty())
        value.append_child(pugi::node_pcdata).set_value(text.c_str());
}

} // namespace

struct DialogArchive::Document
{
    std::string name;
    pugi::xml_document xml;

    pugi::xml_node Node(const std::string& id) const
    {
        const pugi::xml_node found = xml.find_node([&](const pugi::xml_node& node) {
            return std::string(node.name()) == "prop.list" && PairIn(node, "adapter") &&
                   id == ValueOf(PropertyOf(node, "id")).child_value();
        });
        if (!found)
            throw std::runtime_error("the archive has no node " + id);
        return found;
    }
};

DialogArchive::DialogArchive() : document(std::make_unique<Document>())
{
    document->name = zetui::ui::ResourceOfArchive(ids::kArchiveName);
    const auto* const own = GetModuleResources();
    if (!own)
        throw std::runtime_error("the module is not initialised");
    const std::vector<unsigned char> bytes = own->LoadResource(document->name, archiveType);
    if (!document->xml.load_buffer(bytes.data(), bytes.size()))
        throw std::runtime_error("the module has no archive " + document->name);
}

DialogArchive::~DialogArchive() = default;

void DialogArchive::Remove(const std::string& id)
{
    const pugi::xml_node child = document->Node(id).parent();
    pugi::xml_node children = child.parent();
    children.remove_child(child);
    int count = 0;
    for (const pugi::xml_node pair : children.children("prop.pair")) {
        pugi::xml_text key = pair.child("key").text();
        if (std::string(key.get()).starts_with("child-"))
            key.set(("child-" + std::to_string(count++)).c_str());
    }
    ValueOf(PairIn(children, "count")).text().set(count);
}

void DialogArchive::Rename(const std::string& id, const std::string& newId)
{
    SetValue(PropertyOf(document->Node(id), "id"), "string", newId);
}

void DialogArchive::SetClass(const std::string& id, const std::string& adapter, const std::string& className)
{
    const pugi::xml_node node = document->Node(id);
    SetValue(PairIn(node, "adapter"), "string", adapter);
    pugi::xml_node section = PropertyOf(node, "id").parent();
    section.remove_child(PairIn(section, "className"));
    if (className.empty())
        return;
    pugi::xml_node pair = section.append_child("prop.pair");
    pair.append_child("key").text().set("className");
    pair.append_child("string").text().set(className.c_str());
}

void DialogArchive::SetText(const std::string& id, const std::string& text)
{
    SetValue(PropertyOf(document->Node(id), "text"), "ustring", text);
}

void DialogArchive::SetVisible(const std::string& id, bool visible)
{
    SetValue(PropertyOf(document->Node(id), "visible"), visible ? "true" : "false", {});
}

std::vector<unsigned char> DialogArchive::LoadResource(const std::string& name, const std::string& type) const
{
    if (name != document->name || type != archiveType)
        return {};
    std::ostringstream text;
    document->xml.save(text, "", pugi::format_raw);
    const std::string bytes = text.str();
    return {bytes.begin(), bytes.end()};
}

} // namespace zetaudiopluginhostui
