#include <zetui/archives/NodeArchive.h>

#include "archives/ArchiveValue.h"
#include "testing/ArchiveBuilder.h"
#include "testing/WindowsFixture.h"

namespace zetui::ui {
namespace {

using Build = ArchiveBuilder;

const std::string soundBounds = Build::Bounds("1", "2.5", "30", "40");

struct Malformed
{
    const char* name;
    std::string xml;
    /// Parts that the message has.
    std::vector<std::string> says;

    friend void PrintTo(const Malformed& archive, std::ostream* stream) { *stream << archive.name; }
};

class MalformedArchive : public WindowsFixture, public testing::WithParamInterface<Malformed>
{};

TEST_P(MalformedArchive, IsRefusedWithResourceLineAndNode)
{
    try {
        LoadNodeArchive(GetParam().xml, "TEST", {});
        FAIL() << "was loaded";
    } catch (const archive_error& error) {
        const std::string message = error.what();
        EXPECT_NE(message.find("\"TEST\", line "), std::string::npos) << message;
        for (const std::string& part : GetParam().says)
            EXPECT_NE(message.find(part), std::string::npos) << message;
    }
}

std::string Root(const std::string& properties, const std::string& bounds = soundBounds)
{
    return Build::Archive(Build::Node("UI_SubView", "Root", bounds, properties));
}

std::string Map(const std::string& pairs)
{
    return "<prop.map version='4'>" + Build::List(pairs) + "</prop.map>";
}

std::string Nested(int depth)
{
    std::string node = Build::Node("UI_SubView", "Leaf", soundBounds);
    for (int i = 1; i < depth; ++i)
        node = Build::Node("UI_SubView", "N", soundBounds, "", {node});
    return Build::Archive(node);
}

std::string NestedLists(int depth)
{
    std::string list;
    for (int i = 0; i < depth; ++i)
        list += "<prop.list><prop.pair><key>k</key>";
    list += "<true/>";
    for (int i = 0; i < depth; ++i)
        list += "</prop.pair></prop.list>";
    return Map(Build::Pair("x", list));
}

const std::string nodeName = "node \"Root\"";

INSTANTIATE_TEST_SUITE_P(
    NodeArchive, MalformedArchive,
    testing::Values(
        Malformed{"empty", "", {}}, Malformed{"noXml", "hello", {}},
        Malformed{"unclosed", "<prop.map version='4'>\n<prop.list>\n", {"line 2"}},
        Malformed{"otherRoot", "<map version='4'/>", {"prop.map"}},
        Malformed{"noVersion", "<prop.map><prop.list/></prop.map>", {"attribute"}},
        Malformed{"otherVersion", "<prop.map version='5'><prop.list/></prop.map>", {"version"}},
        Malformed{"noList", "<prop.map version='4'/>", {"prop.list"}},
        Malformed{"twoLists", "<prop.map version='4'><prop.list/><prop.list/></prop.map>", {"one prop.list"}},
        Malformed{"textBetween", "<prop.map version='4'>x<prop.list/></prop.map>", {"text stands between"}},
        Malformed{"noArchiveVersion", Map(Build::Pair("root", Build::List(""))), {"UINodeArchive"}},
        Malformed{"laterArchiveVersion",
                  Map(Build::Pair("UINodeArchive", Build::Unsigned("2"))),
                  {"UINodeArchive"}},
        Malformed{"noRoot", Map(Build::Pair("UINodeArchive", Build::Unsigned("1"))), {"no root"}},
        Malformed{"rootIsNoView",
                  Build::Archive(Build::Node("UI_Node", "Root", soundBounds)),
                  {nodeName, "UI_SubView"}},
        Malformed{"rootIsNoList",
                  Map(Build::Pair("UINodeArchive", Build::Unsigned("1")) + Build::Pair("root", "<true/>")),
                  {"prop.list"}},
        Malformed{"noPair", Map("<other/>"), {"prop.pair"}},
        Malformed{"pairWithoutValue", Map("<prop.pair><key>a</key></prop.pair>"), {"key and a value"}},
        Malformed{"pairWithTwoValues",
                  Map("<prop.pair><key>a</key><true/><true/></prop.pair>"),
                  {"key and a value"}},
        Malformed{"emptyKey", Map(Build::Pair("", "<true/>")), {"key is empty"}},
        Malformed{
            "keyTwice", Map(Build::Pair("a", "<true/>") + Build::Pair("a", "<true/>")), {"\"a\"", "twice"}},
        Malformed{"unknownType", Map(Build::Pair("a", "<double>1</double>")), {"double"}},
        Malformed{"unknownAttribute", Map(Build::Pair("a", "<float x='1'>1</float>")), {"\"x\""}},
        Malformed{"intWithoutType", Map(Build::Pair("a", "<int size='32'>1</int>")), {"attribute"}},
        Malformed{"intOfOtherType", Map(Build::Pair("a", "<int type='odd' size='32'>1</int>")), {"signed"}},
        Malformed{"intOf64Bits", Map(Build::Pair("a", "<int type='signed' size='64'>1</int>")), {"size"}},
        Malformed{"intTooLarge", Map(Build::Pair("a", Build::Unsigned("4294967296"))), {"4294967296"}},
        Malformed{"intNegativeUnsigned", Map(Build::Pair("a", Build::Unsigned("-1"))), {"-1"}},
        Malformed{"intTooSmall", Map(Build::Pair("a", Build::Signed("-2147483649"))), {"-2147483649"}},
        Malformed{"intWithRest", Map(Build::Pair("a", Build::Signed("12x"))), {"12x"}},
        Malformed{"intEmpty", Map(Build::Pair("a", Build::Signed(""))), {"whole number"}},
        Malformed{"floatNoNumber", Map(Build::Pair("a", "<float>one</float>")), {"one"}},
        Malformed{"floatInfinite", Map(Build::Pair("a", "<float>inf</float>")), {"inf"}},
        Malformed{"floatBeyondRange", Map(Build::Pair("a", "<float>1e999</float>")), {"1e999"}},
        Malformed{"trueWithText", Map(Build::Pair("a", "<true>x</true>")), {"empty"}},
        Malformed{"stringWithElement", Map(Build::Pair("a", "<string><b/></string>")), {"element"}},
        Malformed{"badUtf8", Map(Build::Pair("a", "<string>\xff</string>")), {"UTF-8"}},
        Malformed{"longText",
                  Map(Build::Pair("a", Build::Text(std::string(longestArchiveText + 1, 'x')))),
                  {"longer"}},
        Malformed{"largeFile", std::string(largestArchive + 1, ' '), {"larger"}},
        Malformed{"deepLists", NestedLists(deepestArchiveList + 1), {"deep"}},
        Malformed{"deepNodes", Nested(65), {"nested too deep", "node \"Leaf\""}},
        Malformed{"unknownAdapter",
                  Build::Archive(Build::Node("Unheard", "Root", soundBounds)),
                  {nodeName, "Unheard"}},
        Malformed{"noBounds", Root("", ""), {nodeName, "bounds"}},
        Malformed{"boundsOfOtherType",
                  Root("", Build::Pair("bounds", Build::List(Build::Pair(".aptype", Build::Signed("2"))))),
                  {nodeName, ".aptype"}},
        Malformed{"boundsWithoutHeight",
                  Root("", Build::Pair("bounds", Build::List(Build::Pair(".aptype", Build::Signed("1")) +
                                                             Build::Pair("left", "<float>1</float>") +
                                                             Build::Pair("top", "<float>1</float>") +
                                                             Build::Pair("width", "<float>1</float>")))),
                  {nodeName, "height"}},
        Malformed{"boundsWithInt",
                  Root("", Build::Pair("bounds", Build::List(Build::Pair(".aptype", Build::Signed("1")) +
                                                             Build::Pair("left", Build::Signed("1"))))),
                  {nodeName, "left"}},
        Malformed{"boundsNegative", Root("", Build::Bounds("0", "0", "-1", "5")), {nodeName, "width"}},
        Malformed{"boundsHuge", Root("", Build::Bounds("1e9", "0", "1", "5")), {nodeName, "left"}},
        Malformed{"visibleAsText", Root(Build::Pair("visible", Build::Text("yes"))), {nodeName, "visible"}},
        Malformed{"tooltipAsFlag", Root(Build::Pair("tooltip", "<true/>")), {nodeName, "tooltip"}},
        Malformed{"constraintsAsNumber",
                  Root(Build::Pair("Constraints", Build::Unsigned("3"))),
                  {nodeName, "Constraints"}},
        Malformed{"constraintsOfOtherType",
                  Root(Build::Pair("Constraints", Build::List(Build::Pair(".aptype", Build::Signed("1"))))),
                  {nodeName, ".aptype"}},
        Malformed{"classNameAsFlag", Root(Build::Pair("className", "<false/>")), {"className"}}),
    [](const auto& test) { return test.param.name; });

std::string NodeOf(const std::string& pairs)
{
    return Build::Archive(Build::List(pairs));
}

const std::string adapter = Build::Pair("adapter", "<string>zetui::ui::UI_SubView</string>");

INSTANTIATE_TEST_SUITE_P(
    NodeArchiveSections, MalformedArchive,
    testing::Values(
        Malformed{"noAdapter", NodeOf(""), {"adapter"}},
        Malformed{"emptyAdapter", NodeOf(Build::Pair("adapter", "<string></string>")), {"adapter"}},
        Malformed{"noSections", NodeOf(adapter), {"sections"}},
        Malformed{"noCount", NodeOf(adapter + Build::Pair("sections", Build::List(""))), {"count"}},
        Malformed{"countTooLarge",
                  NodeOf(adapter +
                         Build::Pair("sections", Build::List(Build::Pair("count", Build::Unsigned("3"))))),
                  {"count"}},
        Malformed{
            "countTooSmall",
            NodeOf(adapter + Build::Pair("sections", Build::List(Build::Pair("count", Build::Unsigned("0")) +
                                                                 Build::Pair("section-0", Build::List(""))))),
            {"count"}},
        Malformed{
            "wrongMember",
            NodeOf(adapter + Build::Pair("sections", Build::List(Build::Pair("count", Build::Unsigned("1")) +
                                                                 Build::Pair("section-1", Build::List(""))))),
            {"section-0"}},
        Malformed{"sectionWithoutName",
                  NodeOf(adapter + Build::Pair("sections", Build::Counted("section", {Build::List("")}))),
                  {"sectionName"}},
        Malformed{"noId",
                  NodeOf(adapter +
                         Build::Pair("sections",
                                     Build::Counted("section", {Build::Section("UI_Node", soundBounds)}))),
                  {"no id"}},
        Malformed{"childrenOfALeaf",
                  Build::Archive(Build::Node("UI_SubView", "Root", soundBounds, "",
                                             {Build::Node("UI_Node", "Leaf", soundBounds, "",
                                                          {Build::Node("UI_Node", "Child", soundBounds)})})),
                  {"node \"Leaf\"", "children"}},
        Malformed{"badVariant",
                  Build::Archive(Build::Node("UI_SubView", "Root", soundBounds, "",
                                             {Build::Node("UI_TextButton", "Button", soundBounds,
                                                          Build::Choice("variant", "4"))})),
                  {"node \"Button\"", "variant"}},
        Malformed{"choiceWithoutNumber",
                  Build::Archive(Build::Node(
                      "UI_SubView", "Root", soundBounds, "",
                      {Build::Node("UI_StaticText", "Text", soundBounds,
                                   Build::Pair("alignment",
                                               Build::List(Build::Pair(".aptype", Build::Signed("2")))))})),
                  {"node \"Text\"", "selected"}}),
    [](const auto& test) { return test.param.name; });

class ArchiveLimits : public WindowsFixture
{};

TEST_F(ArchiveLimits, DeepButAllowedTreesLoad)
{
    EXPECT_TRUE(LoadNodeArchive(Nested(64), "TEST", {})->FindNodeForID("Leaf"));
}

TEST_F(ArchiveLimits, ManyValuesAreReadInOnePass)
{
    std::string pairs;
    for (int i = 0; pairs.size() < largestArchive - 200; ++i)
        pairs += Build::Pair(std::to_string(i), "<true/>");
    const ArchiveList list = ParseArchive(Map(pairs), "TEST");
    EXPECT_EQ(list.pairs.back().second.line, static_cast<int>(list.pairs.size()));
}

TEST_F(ArchiveLimits, TheLineIsTheNodes)
{
    try {
        LoadNodeArchive("<prop.map version='4'>\n<prop.list>\n" +
                            Build::Pair("UINodeArchive", Build::Unsigned("1")) +
                            "<prop.pair><key>root</key>\n\n<true/></prop.pair></prop.list></prop.map>",
                        "TEST", {});
        FAIL();
    } catch (const archive_error& error) {
        EXPECT_NE(std::string(error.what()).find("line 6"), std::string::npos) << error.what();
    }
}

} // namespace
} // namespace zetui::ui
