#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <zetaudiopluginhost/BannedPluginManager.h>

#include "banned/BanListFile.h"
#include "banned/UnsupportedList.h"

namespace zetaudiopluginhost {

/// The content of the list, and that of its file when it was read or written last.
struct BannedPluginManager::State
{
    using Locator = zetaudiofilterhost::PluginLocator;
    struct Ban
    {
        BanInfo info;
        std::shared_ptr<const pugi::xml_document> original;
    };

    /// `ofThisBuild`: a ban of every build, should there be one, stays that.
    void Add(const Locator& locator, BanInfo info, bool ofThisBuild);
    void Remove(const std::vector<Locator>& removed);
    /// Takes in the changes that another program has made in the file since it was read or written last.
    void TakeInWhatOthersSaved(const zetcore::filesupport::File& file);
    /// `text`: the whole file, or empty when it is not at hand.
    void NoteKnown(const zetcore::filesupport::File& file, std::map<Locator, BanInfo> held, std::string text);
    void Replace(BanListFile file, std::optional<zetcore::utility::Reason> error);
    /// The content of the file, which is what the list holds from now on.
    void Load(const zetcore::filesupport::File& file, BanListFile content,
              std::optional<zetcore::utility::Reason> error);

    static constexpr const char* rootName = "bannedplugins";
    static constexpr const char* traceCategory = "BannedPluginManager";
    /// More than a hundred thousand bans; reading takes several times as much memory.
    static constexpr std::uint64_t maxFileSize = 64 << 20;

    /// Held while a file is written, so that an older state does not replace a newer one. Before `mutex`.
    std::mutex saving;
    mutable std::mutex mutex;
    // All of it under the mutex. `locators` holds the keys of `bans`: it is what callers iterate.
    BannedSet locators;
    std::map<Locator, Ban> bans;
    std::shared_ptr<const pugi::xml_document> rest;
    std::wstring knownPath;
    std::map<Locator, BanInfo> known;
    /// A file that still says this need not be understood again.
    std::string knownText;
    std::optional<zetcore::utility::Reason> loadError;
    UnsupportedList unsupported;

  private:
    /// The file is as it was written last.
    bool IsKnown(const std::string& text) const;
    // These are called under the mutex. The registry hears of changes in their order that way. It cannot
    // deadlock: the registry takes its own mutex and calls nothing under it.
    void TellRegistry() const;
    /// The ban is as the file had it, or as absent as there: another program's change of it is newer.
    bool IsAsKnown(const Locator& locator) const;
    /// True when the list has changed.
    bool TakeTheirs(BanListFile& theirs);
};

} // namespace zetaudiopluginhost
