#include "vst3/ModuleInfoJson.h"

#include <cctype>
#include <stdexcept>

#include <boost/json/src.hpp>
#include <boost/system/error_code.hpp>

#include "formats/PluginText.h"
#include "vst3/Vst3Abi.h"

namespace zetaudiopluginhost::vst3 {

namespace json = boost::json;

namespace {

/// The format has four levels; the parser's stack grows with them.
constexpr std::size_t maxDepth = 32;
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

json::value Parse(std::string_view text)
{
    json::parse_options options;
    options.allow_comments = true;
    options.allow_trailing_commas = true;
    options.allow_invalid_utf8 = true;
    options.max_depth = maxDepth;
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(byteOrderMark.size());

    json::stream_parser parser(json::storage_ptr(), options);
    boost::system::error_code error;
    parser.write(text.data(), text.size(), error);
    if (!error)
        parser.finish(error);
    if (error)
        throw std::runtime_error(error.message());
    return parser.release();
}

const json::value* Member(const json::object& object, std::string_view name)
{
    return object.if_contains(json::string_view(name.data(), name.size()));
}

std::string_view Text(const json::value& value)
{
    const json::string* text = value.if_string();
    return text != nullptr ? std::string_view(text->data(), text->size()) : std::string_view();
}

std::wstring MemberText(const json::object& object, std::string_view name)
{
    const json::value* member = Member(object, name);
    return member != nullptr ? PluginText(Text(*member)) : std::wstring();
}

/// Empty when it is no id.
std::wstring ClassId(const json::object& object)
{
    std::wstring id = MemberText(object, "CID");
    if (id.size() != 32)
        return {};
    for (wchar_t& digit : id) {
        if (digit > 0x7F || std::isxdigit(static_cast<int>(digit)) == 0)
            return {};
        digit = static_cast<wchar_t>(std::toupper(static_cast<int>(digit)));
    }
    return id;
}

std::wstring SubCategories(const json::object& object)
{
    const json::value* member = Member(object, "Sub Categories");
    const json::array* parts = member != nullptr ? member->if_array() : nullptr;
    std::wstring joined;
    for (std::size_t i = 0; parts != nullptr && i < parts->size(); ++i) {
        if (!joined.empty())
            joined += L'|';
        joined += PluginText(Text((*parts)[i]));
    }
    return joined;
}

} // namespace

Vst3Description ParseModuleInfo(std::string_view text)
{
    const json::value document = Parse(text);
    const json::object* root = document.if_object();
    if (root == nullptr)
        throw std::runtime_error("it is no object");
    Vst3Description description;
    if (const json::value* factory = Member(*root, "Factory Info");
        factory != nullptr && factory->is_object())
        description.vendor = MemberText(factory->get_object(), "Vendor");

    const json::value* classes = Member(*root, "Classes");
    if (classes == nullptr || !classes->is_array())
        throw std::runtime_error("it has no \"Classes\"");
    for (const json::value& value : classes->get_array()) {
        const json::object* object = value.if_object();
        const json::value* category = object != nullptr ? Member(*object, "Category") : nullptr;
        if (category == nullptr || Text(*category) != audioModuleClass)
            continue;
        Vst3Class found{ClassId(*object), MemberText(*object, "Name"), MemberText(*object, "Vendor"),
                        MemberText(*object, "Version"), SubCategories(*object)};
        if (found.id.empty() || found.name.empty())
            throw std::runtime_error("a class has no \"CID\" or no \"Name\"");
        description.classes.push_back(std::move(found));
        if (description.classes.size() > mostVst3Classes)
            throw std::runtime_error("it has too many classes");
    }
    if (description.classes.empty())
        throw std::runtime_error("it describes no audio module class");
    return description;
}

} // namespace zetaudiopluginhost::vst3
