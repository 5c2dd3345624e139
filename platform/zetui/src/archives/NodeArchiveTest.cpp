#include <zetui/archives/NodeArchive.h>

#include <algorithm>

#include <zetcore/config/Localizer.h>
#include <zetcore/debug/Trace.h>
#include <zetui/controls/UI_Checkbox.h>
#include <zetui/controls/UI_StaticText.h>
#include <zetui/controls/UI_TextButton.h>
#include <zetui/controls/UI_TextEdit.h>
#include <zetui/tree/UI_MultiColumnTree.h>

#include <QLabel>
#include <QPushButton>

#include "archives/ArchivedProperties.h"
#include "nodes/NodeAccess.h"
#include "testing/ArchiveBuilder.h"
#include "testing/PrintRect.h"
#include "testing/WindowsFixture.h"

namespace zetui::ui {
namespace {

using Build = ArchiveBuilder;
using utility::IntrusivePtr;

const std::string someBounds = Build::Bounds("1", "2.5", "30", "40");

class NodeArchiveTest : public WindowsFixture
{
  protected:
    using WindowsFixture::WindowsFixture;
    ~NodeArchiveTest() override { zetcore::config::Localizer::Get().Reset(); }

    static IntrusivePtr<UI_SubView> Load(const std::string& root, const NodeFactory& factory = {})
    {
        return LoadNodeArchive(Build::Archive(root), "TEST", factory);
    }
    /// A root with this node in it, and the node.
    template<typename Node>
    IntrusivePtr<Node> LoadChild(const std::string& node)
    {
        root = Load(Build::Node("UI_SubView", "Root", Build::Bounds("0", "0", "300", "200"), "", {node}));
        return dynamic_cast<Node*>(root->GetChild(0).get());
    }

    IntrusivePtr<UI_SubView> root;
};

class NodeArchiveClassicTest : public NodeArchiveTest
{
  protected:
    NodeArchiveClassicTest() : NodeArchiveTest(skins::Skin::Classic) {}
};

TEST_F(NodeArchiveTest, BuildsTheTree)
{
    const auto inner = Build::Node("UI_SubView", "Inner", someBounds, "",
                                   {Build::Node("UI_TextButton", "Button", someBounds)});
    const auto loaded = Load(Build::Node("UI_SubView", "Root", Build::Bounds("0", "0", "300", "200"), "",
                                         {inner, Build::Node("UI_Node", "Leaf", someBounds)}));
    EXPECT_EQ(loaded->UI_GetID(), "Root");
    EXPECT_EQ(loaded->ChildCount(), 2U);
    const auto button = loaded->FindNodeForID("Button");
    ASSERT_TRUE(button);
    EXPECT_EQ(button->UI_GetParentNode()->UI_GetID(), "Inner");
    EXPECT_EQ(button->UI_GetLocalRectF(true), (UI_Node::RectF{1, 2.5F, 30, 40}));
    EXPECT_TRUE(loaded->FindNodeForID("Leaf"));
}

TEST_F(NodeArchiveTest, EveryAdapterMakesItsClass)
{
    EXPECT_TRUE(LoadChild<UI_Node>(Build::Node("UI_Node", "N", someBounds)));
    EXPECT_TRUE(LoadChild<UI_SubView>(Build::Node("UI_SubView", "N", someBounds)));
    EXPECT_TRUE(LoadChild<controls::UI_TextButton>(Build::Node("UI_TextButton", "N", someBounds)));
    EXPECT_TRUE(LoadChild<controls::UI_Checkbox>(Build::Node("UI_Checkbox", "N", someBounds)));
    EXPECT_TRUE(LoadChild<controls::UI_StaticText>(Build::Node("UI_StaticText", "N", someBounds)));
    EXPECT_TRUE(LoadChild<controls::UI_TextEdit>(Build::Node("UI_TextEdit", "N", someBounds)));
    EXPECT_TRUE(
        LoadChild<controls::UI_ClearButtonTextEdit>(Build::Node("UI_ClearButtonTextEdit", "N", someBounds)));
    EXPECT_TRUE(LoadChild<controls::UI_SearchBox>(Build::Node("UI_SearchBox", "N", someBounds)));
    EXPECT_TRUE(LoadChild<controls::UI_MultiColumnTree>(Build::Node("UI_MultiColumnTree", "N", someBounds)));
}

TEST_F(NodeArchiveTest, TheFactoryComesBeforeTheAdapter)
{
    class Own : public UI_SubView
    {};
    std::vector<std::string> asked;
    const NodeFactory factory = [&](const std::string& className) -> IntrusivePtr<UI_Node> {
        asked.push_back(className);
        return className == "Own" ? utility::MakeIntrusive<Own>() : nullptr;
    };
    const auto withClass = [](const std::string& name) {
        return Build::Pair("className", "<string>" + name + "</string>");
    };
    const auto loaded = Load(Build::Node("UI_SubView", "Root", someBounds, "",
                                         {Build::Node("UI_SubView", "A", someBounds, withClass("Own")),
                                          Build::Node("UI_TextButton", "B", someBounds, withClass("Other")),
                                          Build::Node("Unheard", "C", someBounds, withClass("Own"))}),
                             factory);
    EXPECT_EQ(asked, (std::vector<std::string>{"Own", "Other", "Own"}));
    EXPECT_TRUE(dynamic_cast<Own*>(loaded->GetChild(0).get()));
    EXPECT_TRUE(dynamic_cast<controls::UI_TextButton*>(loaded->GetChild(1).get()));
    EXPECT_TRUE(dynamic_cast<Own*>(loaded->GetChild(2).get()));
}

TEST_F(NodeArchiveTest, PropertiesOfNodesAreApplied)
{
    const auto view = LoadChild<UI_SubView>(Build::Node(
        "UI_SubView", "N", someBounds,
        Build::Pair("visible", "<false/>") + Build::Pair("tooltip", Build::Text("($$$/Test/Tip=Tip)")) +
            Build::Pair("AutoLayout", "<true/>") + Build::Pair("AutoLayout_Horizontal", "<true/>") +
            Build::Pair("AutoLayout_MaintainMargins", "<true/>") +
            Build::Pair("AutoLayout_ScaleChildren", "<true/>") + Build::Pair("LayoutChildren", "<false/>") +
            Build::Constraints("54")));
    ASSERT_TRUE(view);
    EXPECT_FALSE(view->UI_IsShown());
    EXPECT_EQ(view->UI_GetTooltip(), L"Tip");
    const AutoLayout& layout = view->GetAutoLayout();
    EXPECT_TRUE(layout.enabled && layout.horizontal && layout.maintainMargins && layout.scaleChildren);
    EXPECT_FALSE(layout.layoutChildren);
    EXPECT_EQ(view->GetConstraints(), 54U);
}

TEST_F(NodeArchiveTest, TextsAreLocalised)
{
    zetcore::config::Localizer::Get().LoadTableFromText("\"$$$/Test/Scan\"=\"Suchen\"\n", "test");
    const auto button = LoadChild<controls::UI_TextButton>(Build::Node(
        "UI_TextButton", "N", someBounds, Build::Pair("text", Build::Text("($$$/Test/Scan=Scan)"))));
    EXPECT_EQ(button->GetText(), L"Suchen");
    const auto checkbox = LoadChild<controls::UI_Checkbox>(Build::Node(
        "UI_Checkbox", "N", someBounds,
        Build::Pair("text", Build::Text("($$$/Test/Other=Other)")) + Build::Pair("checked", "<true/>")));
    EXPECT_EQ(checkbox->GetText(), L"Other");
    EXPECT_TRUE(checkbox->IsChecked());
}

TEST_F(NodeArchiveTest, StaticTextsHaveTheirAlignment)
{
    const auto text = LoadChild<controls::UI_StaticText>(
        Build::Node("UI_StaticText", "N", someBounds,
                    Build::Choice("alignment", "2") + Build::Pair("text", "<string>Filter:</string>")));
    EXPECT_EQ(text->GetText(), L"Filter:");
    EXPECT_TRUE(static_cast<QLabel*>(WidgetOf(text.get()))->alignment() & Qt::AlignRight);
}

TEST_F(NodeArchiveTest, AButtonOfAnIconsSizeShowsItsIcon)
{
    const std::string text = Build::Pair("text", Build::Text("Add..."));
    const auto icon = LoadChild<controls::UI_TextButton>(
        Build::Node("UI_TextButton", "AddDirectoryButton", Build::Bounds("0", "0", "24", "24"), text));
    const auto* widget = static_cast<QPushButton*>(WidgetOf(icon.get()));
    EXPECT_FALSE(widget->icon().isNull());
    EXPECT_EQ(widget->text(), QString());
    EXPECT_EQ(widget->toolTip(), QStringLiteral("Add..."));
    const auto wide = LoadChild<controls::UI_TextButton>(
        Build::Node("UI_TextButton", "AddDirectoryButton", Build::Bounds("0", "0", "80", "24"), text));
    EXPECT_TRUE(static_cast<QPushButton*>(WidgetOf(wide.get()))->icon().isNull());
}

TEST_F(NodeArchiveClassicTest, ShowsTextsAndNoIcons)
{
    const auto button = LoadChild<controls::UI_TextButton>(
        Build::Node("UI_TextButton", "AddDirectoryButton", Build::Bounds("0", "0", "24", "24"),
                    Build::Pair("text", Build::Text("Add..."))));
    EXPECT_EQ(static_cast<QPushButton*>(WidgetOf(button.get()))->text(), QStringLiteral("Add..."));
}

TEST_F(NodeArchiveTest, ButtonComponentsAreApplied)
{
    const auto button = LoadChild<controls::UI_TextButton>(Build::Node(
        "UI_TextButton", "N", someBounds, Build::Choice("variant", "3") + Build::Pair("quiet", "<true/>")));
    EXPECT_EQ(button->GetButtonComponents().variant, controls::Variant::Accent);
    EXPECT_TRUE(button->GetButtonComponents().quiet);
}

TEST_F(NodeArchiveTest, PropertiesWithoutEffectAreNamedOnceInTheTraceWithTheirFirstLine)
{
    zetcore::debug::SetMasterTraceVolume(3);
    const std::string unheard = Build::Pair("springLoaded", "<true/>") +
                                Build::Pair("unheard", Build::List(Build::Pair("deep", Build::List(""))));
    const std::string archive = Build::Archive(Build::Node(
        "UI_SubView", "N", someBounds, unheard,
        {Build::Node("UI_TextButton", "M", someBounds, unheard + Build::Choice("alignment", "2"))}));
    LoadNodeArchive(archive, "TEST", {});
    const auto lineOf = [&archive](const std::string& key) {
        const auto place = archive.begin() + static_cast<std::ptrdiff_t>(archive.find(">" + key + "<"));
        return key + " (line " + std::to_string(1 + std::count(archive.begin(), place, '\n')) + ")";
    };
    ASSERT_EQ(traceLines->size(), 1U);
    const std::string expected =
        "Layout archive \"TEST\": these properties have no effect in this skin: " + lineOf("alignment") +
        ", " + lineOf("springLoaded") + ", " + lineOf("unheard");
    EXPECT_NE(traceLines->front().find(expected), std::string::npos) << traceLines->front() << expected;
}

TEST_F(NodeArchiveClassicTest, ThePropertiesOfOtherSkinsAreNamedInTheTrace)
{
    zetcore::debug::SetMasterTraceVolume(3);
    LoadChild<controls::UI_TextButton>(Build::Node(
        "UI_TextButton", "N", someBounds, Build::Choice("variant", "3") + Build::Pair("quiet", "<true/>")));
    ASSERT_EQ(traceLines->size(), 1U);
    EXPECT_NE(traceLines->front().find("quiet (line "), std::string::npos) << traceLines->front();
    EXPECT_NE(traceLines->front().find(", variant (line "), std::string::npos) << traceLines->front();
}

TEST_F(NodeArchiveTest, NothingIsTracedWhereEveryPropertyHasAnEffect)
{
    zetcore::debug::SetMasterTraceVolume(9);
    LoadChild<UI_SubView>(Build::Node("UI_SubView", "N", someBounds, Build::Constraints("1")));
    EXPECT_TRUE(traceLines->empty()) << traceLines->front();
}

TEST(ArchivedText, LosesItsParenthesesOnlyAroundAKey)
{
    EXPECT_EQ(LocaliseArchivedText("($$$/Test/Key=A (b))"), L"A (b)");
    EXPECT_EQ(LocaliseArchivedText("$$$/Test/Key=Text"), L"Text");
    EXPECT_EQ(LocaliseArchivedText("(plain)"), L"(plain)");
    EXPECT_EQ(LocaliseArchivedText("($$$/Test/Key=open"), L"($$$/Test/Key=open");
    EXPECT_EQ(LocaliseArchivedText(""), L"");
}

TEST(IconOfButton, GoesByTheArchiveThenByTheId)
{
    EXPECT_EQ(IconOfButton("", "AddDirectoryButton"), "add");
    EXPECT_EQ(IconOfButton("", "RemoveDirectoryButton"), "remove");
    EXPECT_EQ(IconOfButton("", "DefaultDirectoriesButton"), "reset");
    EXPECT_EQ(IconOfButton("", "OKButton"), "ok");
    EXPECT_EQ(IconOfButton("", "CancelButton"), "cancel");
    EXPECT_EQ(IconOfButton("", "ScanButton"), "");
    EXPECT_EQ(IconOfButton("", "O"), "");
    EXPECT_EQ(IconOfButton("remove", "OKButton"), "remove");
}

} // namespace
} // namespace zetui::ui
