// These tests check the layout archives node by node.
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <pugixml.hpp>
#include <zetcore/geom/RectT.h>

#include "testing/LayoutArchiveFixture.h"

namespace zetaudiopluginhostui {
namespace {

using Bounds = zetcore::geom::RectT<float>;

struct ArchivedNode
{
    int depth;
    std::string adapter, className, id, text;
    Bounds bounds;
    /// The properties of all sections of the node. An enumerated value is here as its number.
    std::map<std::string, std::string> properties;
};

void ReadNode(const pugi::xml_node& node, int depth, std::vector<ArchivedNode>& nodes)
{
    ArchivedNode archived{depth, Scalar(ValueOf(node, "adapter")), {}, {}, {}, {}, {}};
    const pugi::xml_node sections = ValueOf(node, "sections");
    const int count = std::stoi(Scalar(ValueOf(sections, "count")));
    pugi::xml_node children;
    for (int i = 0; i < count; ++i) {
        for (const pugi::xml_node pair :
             ValueOf(sections, "section-" + std::to_string(i)).children("prop.pair")) {
            const std::string key = pair.child_value("key");
            const pugi::xml_node value = pair.child("key").next_sibling();
            if (key == "children")
                children = value;
            else if (key == "bounds")
                archived.bounds = {
                    std::stof(Scalar(ValueOf(value, "left"))), std::stof(Scalar(ValueOf(value, "top"))),
                    std::stof(Scalar(ValueOf(value, "width"))), std::stof(Scalar(ValueOf(value, "height")))};
            else if (std::string(value.name()) != "prop.list")
                archived.properties[key] = Scalar(value);
            else if (const pugi::xml_node selected = ValueOf(value, "selected"))
                archived.properties[key] = Scalar(selected);
        }
    }
    archived.className = archived.properties["className"];
    archived.id = archived.properties["id"];
    archived.text = archived.properties["text"];
    nodes.push_back(archived);
    const int childCount = children ? std::stoi(Scalar(ValueOf(children, "count"))) : 0;
    for (int i = 0; i < childCount; ++i)
        ReadNode(ValueOf(children, "child-" + std::to_string(i)), depth + 1, nodes);
}

class LayoutArchive : public LayoutArchiveFixture
{
  protected:
    static std::vector<ArchivedNode> Read(const char* name)
    {
        pugi::xml_document document;
        Load(name, document);
        const pugi::xml_node map = document.child("prop.map");
        EXPECT_EQ(std::string(map.attribute("version").value()), "4");
        const pugi::xml_node top = map.child("prop.list");
        EXPECT_EQ(Scalar(ValueOf(top, "UINodeArchive")), "1");
        std::vector<ArchivedNode> nodes;
        ReadNode(ValueOf(top, "root"), 0, nodes);
        return nodes;
    }
};

struct Expected
{
    int depth;
    const char* adapter;
    const char* className;
    const char* id;
    const char* text;
    Bounds plain, v7;
};

constexpr char view[] = "zetui::ui::UI_SubView";
constexpr char button[] = "zetui::controls::UI_TextButton";
constexpr char checkbox[] = "zetui::controls::UI_Checkbox";
constexpr char label[] = "zetui::controls::UI_StaticText";
constexpr char edit[] = "zetui::controls::UI_ClearButtonTextEdit";
constexpr char tree[] = "zetui::controls::UI_MultiColumnTree";

const std::vector<Expected>& ExpectedNodes()
{
    static const std::vector<Expected> nodes{
        {0, view, "", "UI_SubView", "", {0, 0, 737, 470}, {0, 0, 737, 474}},
        {1, view, "", "UI_SubView", "", {19, 435, 698, 19}, {22, 437, 698, 24}},
        {2, button, "", "OKButton", "($$$/PluginManager/Dialog/OK=OK)", {531, 0, 77, 19}, {634, 0, 24, 24}},
        {2,
         button,
         "",
         "CancelButton",
         "($$$/PluginManager/Dialog/Cancel=Cancel)",
         {621, 0, 77, 19},
         {670, 0, 24, 24}},
        {1, view, "BoxView", "VST2DirectoryTreeSection", "", {14, 8, 706, 143}, {14, 8, 706, 143}},
        {2,
         label,
         "",
         "UI_StaticText",
         "($$$/PluginManager/Dialog/VSTPluginFolders=VST Plug-In Folders:)",
         {0, 0, 703, 19},
         {0, 0, 703, 19}},
        {2, view, "", "UI_SubView", "", {0, 20, 706, 31}, {0, 20, 706, 36}},
        {3, view, "", "UI_SubView", "", {4, 6, 273, 19}, {0, 6, 273, 24}},
        {4,
         button,
         "",
         "AddDirectoryButton",
         "($$$/PluginManager/Dialog/Add=Add...)",
         {4, 0, 80, 19},
         {0, 0, 24, 24}},
        {4,
         button,
         "",
         "RemoveDirectoryButton",
         "($$$/PluginManager/Dialog/Remove=Remove)",
         {94, 0, 80, 19},
         {32, 0, 24, 24}},
        {4,
         button,
         "",
         "DefaultDirectoriesButton",
         "($$$/PluginManager/Dialog/Default=Default)",
         {184, 0, 80, 19},
         {64, 0, 24, 24}},
        {2, tree, "", "DirectoryList", "", {0, 50, 706, 93}, {0, 58, 706, 85}},
        {1, view, "BoxView", "PluginTreeSection", "", {14, 165, 706, 255}, {14, 165, 706, 259}},
        {2,
         label,
         "",
         "UI_StaticText",
         "($$$/PluginManager/Dialog/AvailablePlugins=Available Plug-Ins:)",
         {0, 0, 706, 19},
         {0, 0, 706, 19}},
        {2, view, "", "UI_SubView", "", {0, 20, 706, 31}, {0, 20, 706, 36}},
        {3, view, "", "UI_SubView", "", {4, 4, 450, 19}, {0, 6, 450, 24}},
        {4,
         button,
         "",
         "UpdateButton",
         "($$$/PluginManager/Dialog/Scan=Scan for Plug-Ins)",
         {4, 0, 110, 19},
         {0, 0, 110, 24}},
        {4,
         checkbox,
         "",
         "RescanExisting",
         "($$$/PluginManager/Dialog/RescanExisting=Rescan existing plug-ins)",
         {125, 3, 80, 14},
         {125, 0, 80, 24}},
        {4,
         button,
         "",
         "EnableAllButton",
         "($$$/PluginManager/Dialog/EnableAll=Enable All)",
         {218, 0, 80, 19},
         {218, 0, 80, 24}},
        {4,
         button,
         "",
         "DisableAllButton",
         "($$$/PluginManager/Dialog/DisableAll=Disable All)",
         {308, 0, 80, 19},
         {308, 0, 80, 24}},
        {4,
         checkbox,
         "",
         "SeparateProcess",
         "($$$/PluginManager/Dialog/SeparateProcess=Separate process)",
         {397, 3, 49, 14},
         {397, 0, 49, 24}},
        {3,
         label,
         "",
         "FindStaticText",
         "($$$/PluginManager/Dialog/Filter=Filter:)",
         {463, 4, 53, 20},
         {456, 8, 53, 20}},
        {3, edit, "UI_SearchBox", "FindTextEdit", "", {525, 4, 173, 20}, {514, 6, 192, 24}},
        {2, tree, "PluginMultiColumnTree", "PluginList", "", {0, 50, 706, 205}, {0, 58, 706, 201}}};
    return nodes;
}

TEST_F(LayoutArchive, EachNodeHasItsAdapterClassIdTextAndBounds)
{
    for (const bool v7 : {false, true}) {
        const auto nodes = Read(archiveNames[v7 ? 1 : 0]);
        ASSERT_EQ(nodes.size(), ExpectedNodes().size());
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            const Expected& expected = ExpectedNodes()[i];
            SCOPED_TRACE(std::string(v7 ? "V7 " : "") + expected.id + " " + expected.text);
            EXPECT_EQ(nodes[i].depth, expected.depth);
            EXPECT_EQ(nodes[i].adapter, expected.adapter);
            EXPECT_EQ(nodes[i].className, expected.className);
            EXPECT_EQ(nodes[i].id, expected.id);
            EXPECT_EQ(nodes[i].text, expected.text);
            EXPECT_EQ(nodes[i].bounds, v7 ? expected.v7 : expected.plain);
        }
    }
}

using Properties = std::map<std::string, std::string>;

void ExpectProperties(const ArchivedNode& node, const Properties& expected)
{
    for (const auto& [key, value] : expected) {
        const auto found = node.properties.find(key);
        EXPECT_EQ(found == node.properties.end() ? "(missing)" : found->second, value) << key;
    }
}

TEST_F(LayoutArchive, ControlsHaveTheLooksOfTheirKind)
{
    for (const bool v7 : {false, true}) {
        for (const ArchivedNode& node : Read(archiveNames[v7 ? 1 : 0])) {
            SCOPED_TRACE(std::string(v7 ? "V7 " : "") + node.id);
            ExpectProperties(node, {{"tooltip", ""}, {"visible", "true"}, {"LayoutChildren", "true"}});
            if (node.adapter == button)
                ExpectProperties(node, {{"cornerRadius", "3"},
                                        {"textAlignment", "1"},
                                        {"springLoaded", "true"},
                                        {"strokeSize1", "1"},
                                        {"strokeSize2", "2"}});
            if (node.adapter == checkbox)
                ExpectProperties(node, {{"checkSize", v7 ? "24" : "14"}, {"checked", "false"}});
            if (node.adapter == label)
                ExpectProperties(node, {{"fontSizeID", "1"},
                                        {"multiLine", "false"},
                                        {"textTruncation", "2"},
                                        {"alignment", node.id == "FindStaticText" ? "2" : "0"}});
        }
    }
}

TEST_F(LayoutArchive, TheV7SkinSaysHowItsButtonsAndCheckboxesLook)
{
    for (const ArchivedNode& node : Read("AUDIOPLUGINMANAGER.V7")) {
        SCOPED_TRACE(node.id);
        if (node.adapter == button) {
            ExpectProperties(node, {{"emphasized", "false"},
                                    {"quiet", "false"},
                                    {"selected", "false"},
                                    {"showHoldIcon", "false"}});
            EXPECT_TRUE(node.properties.contains("componentSize"));
            EXPECT_TRUE(node.properties.contains("staticColor"));
            if (node.id == "OKButton")
                ExpectProperties(node, {{"chromeType", "0"}, {"style", "0"}, {"variant", "3"}});
            else if (node.id == "CancelButton")
                ExpectProperties(node, {{"chromeType", "4"}, {"style", "1"}, {"variant", "2"}});
            else
                ExpectProperties(node, {{"chromeType", "1"}, {"style", "0"}, {"variant", "0"}});
        }
        if (node.adapter == checkbox)
            ExpectProperties(node, {{"chromeType", "-1"}, {"variant", "1"}, {"isSwitch", "false"}});
    }
    for (const ArchivedNode& node : Read("AUDIOPLUGINMANAGER")) {
        for (const char* const key : {"chromeType", "componentSize", "emphasized", "quiet", "selected",
                                      "showHoldIcon", "staticColor", "style", "variant", "isSwitch"})
            EXPECT_FALSE(node.properties.contains(key)) << node.id << ", " << key;
    }
}

TEST_F(LayoutArchive, TheWindowArrangesItsSectionsVerticallyAndStripsTheirControlsSideBySide)
{
    for (const bool v7 : {false, true}) {
        const auto nodes = Read(archiveNames[v7 ? 1 : 0]);
        ExpectProperties(nodes.front(), {{"AutoLayout", "true"},
                                         {"AutoLayout_Horizontal", "false"},
                                         {"AutoLayout_MaintainMargins", "true"},
                                         {"AutoLayout_ScaleChildren", "true"}});
        int strips = 0;
        for (const ArchivedNode& node : nodes) {
            if (node.depth == 0 || node.id != "UI_SubView")
                continue;
            ++strips;
            ExpectProperties(node, {{"AutoLayout", "true"}, {"AutoLayout_Horizontal", "true"}});
            if (v7)
                ExpectProperties(node, {{"AutoLayout_MaintainMargins", "true"}});
        }
        EXPECT_EQ(strips, 5);
    }
}

TEST_F(LayoutArchive, NoNodeIsForShellPluginsAndNoIdOfAControlIsThereTwice)
{
    for (const char* const name : archiveNames) {
        std::multiset<std::string> found;
        for (const ArchivedNode& node : Read(name))
            found.insert(node.id);
        EXPECT_EQ(found.count("EnableVST2Shell"), 0u);
        for (const std::string& id : found) {
            if (id != "UI_SubView" && id != "UI_StaticText") {
                EXPECT_EQ(found.count(id), 1u) << id;
            }
        }
    }
}

} // namespace
} // namespace zetaudiopluginhostui
