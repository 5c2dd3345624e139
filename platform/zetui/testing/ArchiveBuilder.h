#pragma once

#include <string>
#include <vector>

namespace zetui {

/// Writes layout archives, well formed unless a test puts something else into them.
struct ArchiveBuilder
{
    static std::string Pair(const std::string& key, const std::string& value)
    {
        return "<prop.pair><key>" + key + "</key>" + value + "</prop.pair>\n";
    }
    static std::string Unsigned(const std::string& number)
    {
        return "<int type='unsigned' size='32'>" + number + "</int>";
    }
    static std::string Signed(const std::string& number)
    {
        return "<int type='signed' size='32'>" + number + "</int>";
    }
    static std::string List(const std::string& pairs) { return "<prop.list>" + pairs + "</prop.list>"; }
    static std::string Text(const std::string& text) { return "<ustring>" + text + "</ustring>"; }

    static std::string Bounds(const std::string& left, const std::string& top, const std::string& width,
                              const std::string& height)
    {
        return Pair("bounds",
                    List(Pair(".aptype", Signed("1")) + Pair("left", "<float>" + left + "</float>") +
                         Pair("top", "<float>" + top + "</float>") +
                         Pair("width", "<float>" + width + "</float>") +
                         Pair("height", "<float>" + height + "</float>")));
    }
    static std::string Choice(const std::string& key, const std::string& number)
    {
        return Pair(key, List(Pair(".aptype", Signed("2")) + Pair("selected", Signed(number))));
    }
    static std::string Constraints(const std::string& bits)
    {
        return Pair("Constraints", List(Pair(".aptype", Signed("4")) + Pair("constraints", Unsigned(bits))));
    }
    static std::string Counted(const std::string& prefix, const std::vector<std::string>& members)
    {
        std::string pairs = Pair("count", Unsigned(std::to_string(members.size())));
        for (std::size_t i = 0; i < members.size(); ++i)
            pairs += Pair(prefix + "-" + std::to_string(i), members[i]);
        return List(pairs);
    }
    static std::string Section(const std::string& name, const std::string& pairs)
    {
        return List(Pair("sectionName", "<string>" + name + "</string>") + pairs);
    }
    /// The properties stand in the section of the node's class.
    static std::string Node(const std::string& adapter, const std::string& id, const std::string& bounds,
                            const std::string& properties = "", const std::vector<std::string>& children = {})
    {
        return List(Pair("adapter", "<string>zetui::any::" + adapter + "</string>") +
                    Pair("sections",
                         Counted("section",
                                 {Section(adapter, properties + Pair("children", Counted("child", children))),
                                  Section("UI_Node", Pair("id", "<string>" + id + "</string>") + bounds)})));
    }
    static std::string Archive(const std::string& root)
    {
        return "<?xml version='1.0' encoding='UTF-8'?>\n<prop.map version='4'>\n" +
               List(Pair("UINodeArchive", Unsigned("1")) + Pair("root", root)) + "</prop.map>\n";
    }
};

} // namespace zetui
