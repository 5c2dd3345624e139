#pragma once

#include <filesystem>
#include <string>

namespace bench {

/// Makes a folder, should there be none, with so many copies of a sample plug-in of good/ or bad/. They are
/// real files, because links to one file would be loaded once. Their names begin with `prefix` and go on with
/// a number, so that they stand at even distances among `outOf` files.
std::filesystem::path MakeCopies(const std::filesystem::path& folder, const std::string& plugin, int copies,
                                 const std::string& prefix = "", int outOf = 0);

} // namespace bench
