// These tests check that the layout archives have the toolkit's format.
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include "testing/LayoutArchiveFixture.h"

namespace zetaudiopluginhostui {
namespace {

using LayoutArchiveFormat = LayoutArchiveFixture;

/// The type of each key's value. The value of a key that is not listed must be a flag.
const std::map<std::string, std::string>& ExpectedTypes()
{
    static const std::map<std::string, std::string> types{{"UINodeArchive", "unsigned"},
                                                          {"count", "unsigned"},
                                                          {"constraints", "unsigned"},
                                                          {".aptype", "signed"},
                                                          {"selected", "signed"},
                                                          {"adapter", "string"},
                                                          {"sectionName", "string"},
                                                          {"id", "string"},
                                                          {"className", "string"},
                                                          {"text", "ustring"},
                                                          {"tooltip", "ustring"},
                                                          {"left", "float"},
                                                          {"top", "float"},
                                                          {"width", "float"},
                                                          {"height", "float"},
                                                          {"cornerRadius", "float"},
                                                          {"strokeSize1", "float"},
                                                          {"strokeSize2", "float"},
                                                          {"checkSize", "float"},
                                                          {"root", "prop.list"},
                                                          {"sections", "prop.list"},
                                                          {"children", "prop.list"},
                                                          {"bounds", "prop.list"},
                                                          {"Constraints", "prop.list"},
                                                          {"fontSizeID", "prop.list"},
                                                          {"textTruncation", "prop.list"},
                                                          {"alignment", "prop.list"},
                                                          {"textAlignment", "prop.list"},
                                                          {"chromeType", "prop.list"},
                                                          {"componentSize", "prop.list"},
                                                          {"staticColor", "prop.list"},
                                                          {"style", "prop.list"},
                                                          {"variant", "prop.list"}};
    return types;
}

std::string TypeOf(const pugi::xml_node& value)
{
    const std::string name = value.name();
    if (name != "int")
        return name;
    EXPECT_EQ(std::string(value.attribute("size").value()), "32");
    return value.attribute("type").value();
}

/// The sections of a node of this class, most derived first.
std::vector<std::string> ExpectedSections(const std::string& adapter)
{
    std::vector<std::string> sections;
    const std::string name = adapter.substr(adapter.rfind(':') + 1);
    if (name != "UI_SubView")
        sections.push_back(name);
    if (name == "UI_ClearButtonTextEdit")
        sections.emplace_back("UI_TextEdit");
    sections.insert(sections.end(), {"UI_SubView", "UI_Node"});
    return sections;
}

TEST_F(LayoutArchiveFormat, EachValueIsOfTheTypeOfItsKey)
{
    for (const char* const name : archiveNames) {
        pugi::xml_document document;
        Load(name, document);
        std::set<std::string> seen;
        for (const auto& found : document.select_nodes("//prop.pair")) {
            const pugi::xml_node pair = found.node();
            const std::string key = pair.child_value("key");
            const pugi::xml_node value = pair.child("key").next_sibling();
            const auto type = ExpectedTypes().find(key);
            seen.insert(key);
            // A button's flag has the name of the number that an enumeration holds.
            const bool isFlag = std::string(value.name()) == "true" || std::string(value.name()) == "false";
            if (key.starts_with("section-") || key.starts_with("child-"))
                EXPECT_EQ(TypeOf(value), "prop.list") << name << ", " << key;
            else if (type == ExpectedTypes().end())
                EXPECT_TRUE(isFlag) << name << ", " << key;
            else if (key != "selected" || ValueOf(pair.parent(), ".aptype"))
                EXPECT_EQ(TypeOf(value), type->second) << name << ", " << key;
            else
                EXPECT_TRUE(isFlag) << name << ", " << key;
        }
        EXPECT_TRUE(seen.contains("UINodeArchive") && seen.contains("constraints") && seen.contains("text"));
    }
}

TEST_F(LayoutArchiveFormat, ListsSayOfWhichKindTheyAre)
{
    const std::map<std::string, std::string> kinds{{"bounds", "1"}, {"Constraints", "4"}};
    for (const char* const name : archiveNames) {
        pugi::xml_document document;
        Load(name, document);
        int typed = 0;
        for (const auto& found : document.select_nodes("//prop.pair[key='.aptype']")) {
            const pugi::xml_node list = found.node().parent();
            const std::string key = list.parent().child_value("key");
            const auto kind = kinds.find(key);
            EXPECT_EQ(Scalar(ValueOf(list, ".aptype")), kind == kinds.end() ? "2" : kind->second) << key;
            EXPECT_EQ(static_cast<bool>(ValueOf(list, "selected")), kind == kinds.end()) << key;
            ++typed;
        }
        EXPECT_GT(typed, 48) << "each of the 24 nodes has bounds and constraints";
    }
}

TEST_F(LayoutArchiveFormat, TheSectionsOfANodeBeginWithItsMostDerivedClass)
{
    for (const char* const name : archiveNames) {
        pugi::xml_document document;
        Load(name, document);
        for (const auto& found : document.select_nodes("//prop.list[prop.pair/key='adapter']")) {
            const pugi::xml_node node = found.node();
            const std::string adapter = Scalar(ValueOf(node, "adapter"));
            const pugi::xml_node sections = ValueOf(node, "sections");
            std::vector<std::string> names;
            for (int i = 0; i < std::stoi(Scalar(ValueOf(sections, "count"))); ++i)
                names.push_back(
                    Scalar(ValueOf(ValueOf(sections, "section-" + std::to_string(i)), "sectionName")));
            EXPECT_EQ(names, ExpectedSections(adapter)) << name << ", " << adapter;
        }
    }
}

} // namespace
} // namespace zetaudiopluginhostui
