#include "ManagerFixture.h"

#include <set>

#include <boost/json/src.hpp>

namespace {

std::string Text(const boost::json::object& object, const char* key)
{
    return std::string(object.at(key).as_string());
}

std::string TextOrNull(const boost::json::object& object, const char* key)
{
    return object.at(key).is_null() ? std::string() : Text(object, key);
}

std::set<std::string> KeysOf(const boost::json::object& object)
{
    std::set<std::string> keys;
    for (const auto& member : object)
        keys.emplace(member.key());
    return keys;
}

void ReadPlugins(const boost::json::array& array, std::vector<std::string>& paths,
                 std::map<std::string, std::string>& reasons)
{
    for (const boost::json::value& value : array) {
        const boost::json::object& object = value.as_object();
        EXPECT_NE(Text(object, "name"), "");
        EXPECT_TRUE(object.at("technology").is_string() && object.at("subcomponent").is_string());
        paths.push_back(Text(object, "path"));
        if (object.contains("reason"))
            reasons[paths.back()] = Text(object, "reason");
    }
}

} // namespace

// `boost::json::parse` is strict: it also refuses invalid UTF-8 and anything behind the value.
std::vector<ListedPlugin> ReadList(const std::string& json)
{
    std::vector<ListedPlugin> plugins;
    const boost::json::value list = boost::json::parse(json);
    for (const boost::json::value& value : list.as_array()) {
        const boost::json::object& object = value.as_object();
        ListedPlugin plugin;
        plugin.technology = Text(object, "technology");
        plugin.path = Text(object, "path");
        plugin.subcomponent = Text(object, "subcomponent");
        plugin.name = Text(object, "name");
        plugin.version = Text(object, "version");
        plugin.vendor = Text(object, "vendor");
        plugin.id = Text(object, "id");
        plugin.category = Text(object, "category");
        plugin.enabled = object.at("enabled").as_bool();
        plugin.effect = object.at("effect").as_bool();
        plugin.instrument = object.at("instrument").as_bool();
        plugin.status = Text(object, "status");
        plugin.fileTime = TextOrNull(object, "fileTime");
        std::set<std::string> keys{"technology", "path",   "subcomponent", "name",    "version",
                                   "vendor",     "id",     "category",     "enabled", "effect",
                                   "instrument", "status", "fileTime"};
        if (plugin.status != "working") {
            plugin.reason = Text(object, "reason");
            keys.insert("reason");
        }
        if (plugin.IsBanned()) {
            plugin.bannedAt = TextOrNull(object, "bannedAt");
            keys.insert("bannedAt");
        }
        EXPECT_EQ(KeysOf(object), keys);
        plugins.push_back(std::move(plugin));
    }
    return plugins;
}

ScanSummary ReadScanSummary(const zettesting::ChildResult& result)
{
    ScanSummary summary;
    summary.exitStatus = result.exitStatus;
    summary.messages = result.error;
    EXPECT_FALSE(result.timedOut) << result.error;
    EXPECT_FALSE(result.outputHeldOpen);
    const boost::json::value value = boost::json::parse(result.output);
    const boost::json::object& object = value.as_object();
    const std::pair<const char*, std::vector<std::string>*> arrays[] = {
        {"added", &summary.added},           {"updated", &summary.updated},
        {"removed", &summary.removed},       {"banned", &summary.banned},
        {"triedAgain", &summary.triedAgain}, {"unreadable", &summary.unreadable},
        {"passedOver", &summary.passedOver}, {"unreached", &summary.unreached}};
    std::set<std::string> keys{"scanned", "found", "end", "reason", "seconds"};
    for (const auto& [name, paths] : arrays) {
        keys.insert(name);
        ReadPlugins(object.at(name).as_array(), *paths, summary.reasons);
    }
    EXPECT_EQ(KeysOf(object), keys);
    summary.scanned = object.at("scanned").to_number<long long>();
    summary.found = object.at("found").to_number<long long>();
    summary.end = Text(object, "end");
    summary.reason = Text(object, "reason");
    summary.seconds = object.at("seconds").to_number<double>();
    return summary;
}
