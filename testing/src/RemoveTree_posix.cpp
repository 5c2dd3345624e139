#include "RemoveTree.h"

namespace zettesting {

namespace {

namespace fs = std::filesystem;

/// A folder without rights cannot be emptied. A scanner that is just ending may take files away meanwhile,
/// so no error may be thrown here.
void GiveRights(const fs::path& folder)
{
    std::error_code gone;
    fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied, gone);
    for (; !gone && entry != fs::recursive_directory_iterator(); entry.increment(gone)) {
        std::error_code notOurs;
        if (entry->is_directory(notOurs) && !entry->is_symlink(notOurs))
            fs::permissions(entry->path(), fs::perms::owner_all, fs::perm_options::add, notOurs);
    }
}

} // namespace

void RemoveTree(const fs::path& folder)
{
    // Either step ends early when somebody else removes a file of the tree at the same time.
    constexpr int kTries = 10;
    std::error_code failed;
    for (int tries = 0; tries < kTries; ++tries) {
        GiveRights(folder);
        fs::remove_all(folder, failed);
        if (!failed)
            return;
    }
}

} // namespace zettesting
