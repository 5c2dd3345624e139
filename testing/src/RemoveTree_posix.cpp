#include "RemoveTree.h"

namespace zettesting {

void RemoveTree(const std::filesystem::path& folder)
{
    std::error_code ignored;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(
             folder, std::filesystem::directory_options::skip_permission_denied, ignored)) {
        std::error_code notOurs;
        if (entry.is_directory(notOurs) && !entry.is_symlink(notOurs))
            std::filesystem::permissions(entry.path(), std::filesystem::perms::owner_all,
                                         std::filesystem::perm_options::add, notOurs);
    }
    std::filesystem::remove_all(folder, ignored);
}

} // namespace zettesting
