#include "text/XmlText.h"

#include <limits>

#include <gtest/gtest.h>
#include <pugixml.hpp>

namespace zetaudiofilterhost {

namespace {

std::string Escaped(std::string_view text)
{
    std::string xml;
    AppendXmlEscaped(xml, text);
    return xml;
}

std::string EscapedWide(std::wstring_view text)
{
    std::string xml;
    AppendXmlEscaped(xml, text);
    return xml;
}

/// The value that a reader finds in an attribute with this text.
std::string ReadBack(const std::string& escaped)
{
    pugi::xml_document document;
    const std::string xml = "<a b=\"" + escaped + "\"/>";
    EXPECT_TRUE(document.load_buffer(xml.data(), xml.size()));
    return document.document_element().attribute("b").value();
}

TEST(XmlText, EscapesWhatMarksXml)
{
    EXPECT_EQ(Escaped("a<b>&\"c'"), "a&lt;b&gt;&amp;&quot;c'");
    EXPECT_EQ(EscapedWide(L"a<b>&\"c'"), "a&lt;b&gt;&amp;&quot;c'");
}

TEST(XmlText, WhatUtf8CanSayComesBack)
{
    const std::string texts[] = {
        "",         "plain",          "tab\tline\nreturn\r", "\xC3\xA9\xE6\x97\xA5\xF0\x9F\x8E\xB9",
        " spaces ", "&amp; &#10; ]]>"};
    for (const std::string& text : texts)
        EXPECT_EQ(ReadBack(Escaped(text)), text);
    EXPECT_EQ(ReadBack(EscapedWide(L"\u00e9\u65e5\U0001F3B9\n\u07ff\u0800")),
              "\xC3\xA9\xE6\x97\xA5\xF0\x9F\x8E\xB9\n\xDF\xBF\xE0\xA0\x80");
}

TEST(XmlText, ControlCharactersBecomeSpaces)
{
    EXPECT_EQ(Escaped(std::string("a\0b\x01\x1f\x7f", 6)), "a b   ");
    EXPECT_EQ(EscapedWide(std::wstring(L"a\0b\x01", 4)), "a b ");
}

TEST(XmlText, InvalidUtf8IsReplaced)
{
    const std::string bad[] = {"\xFF", "\x80", "\xC0", "\xC3", "\xE2\x82", "\xF0\x9F\x8E", "\xF8"};
    for (const std::string& text : bad) {
        const std::string escaped = Escaped("<" + text + "x");
        EXPECT_EQ(FindUnreadableByte(escaped), escaped.npos);
        EXPECT_EQ(escaped.substr(0, 7), "&lt;\xEF\xBF\xBD");
        EXPECT_EQ(escaped.back(), 'x');
    }
    EXPECT_EQ(Escaped("\xEF\xBF\xBF"), "\xEF\xBF\xBD");
    EXPECT_EQ(EscapedWide(std::wstring{static_cast<wchar_t>(0xdcff), L'\uffff'}), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(XmlText, FindsTheFirstUnreadableByte)
{
    EXPECT_EQ(FindUnreadableByte("plain \xC3\xA9\n\t\r"), std::string::npos);
    struct Case
    {
        std::string text;
        std::size_t at;
    };
    const Case cases[] = {
        {"ab\xFF", 2},
        {"a\xC3", 1},
        {std::string("abc\0", 4), 3},
        {"\x1b", 0},
        {"\xC1\xBF", 0},
        {"\xE0\x80\x80", 0},
        {"\xED\xA0\x80", 0},
        {"\xF0\x80\x80\x80", 0},
        {"\xF4\x90\x80\x80", 0},
        {"\xF5\x80\x80\x80", 0},
        {"\xE2\x82(", 0},
    };
    for (const Case& test : cases)
        EXPECT_EQ(FindUnreadableByte(test.text), test.at) << test.text;
}

TEST(XmlText, WritesNumbersInWhole)
{
    std::string xml;
    AppendXmlNumber(xml, "size", std::numeric_limits<std::uint64_t>::max());
    AppendXmlNumber(xml, "time", std::numeric_limits<std::int64_t>::min());
    AppendXmlBoolean(xml, "enabled", false);
    EXPECT_EQ(xml, " size=\"18446744073709551615\" time=\"-9223372036854775808\" enabled=\"false\"");
}

} // namespace

} // namespace zetaudiofilterhost
