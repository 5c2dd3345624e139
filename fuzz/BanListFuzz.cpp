// Reads the lists of banned plug-ins and of reasons.
#include <stdexcept>
#include <string>

#include "FuzzTarget.h"
#include "banned/BanListFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace zetaudiopluginhost;
    constexpr const char* root = "bannedplugins";
    BanListFile list;
    try {
        list = ParseBanList(zetfuzz::Text(data, size), root);
    } catch (const std::runtime_error& error) {
        zetfuzz::Require(std::string_view(error.what()).starts_with("line "), "the error names the line",
                         error.what());
        return 0;
    }
    for (const BanEntry& entry : list.entries) {
        zetfuzz::Require(!entry.locator.IsEmpty(), "an entry names a plug-in");
        zetfuzz::Require(CleanReason(entry.info.reason) == entry.info.reason, "a clean reason stays as it is",
                         entry.info.reason);
        zetfuzz::Require(entry.info == CleanBan(entry.info), "clean facts stay as they are",
                         entry.info.reason);
    }
    const std::string written = WriteBanList(list, root);
    const BanListFile again = ParseBanList(written, root);
    zetfuzz::Require(again.entries.size() == list.entries.size(), "no ban is lost or won", written);
    for (std::size_t i = 0; i < list.entries.size(); ++i)
        zetfuzz::Require(again.entries[i].locator == list.entries[i].locator &&
                             again.entries[i].info == list.entries[i].info,
                         "a ban written again reads the same", written);
    return 0;
}
