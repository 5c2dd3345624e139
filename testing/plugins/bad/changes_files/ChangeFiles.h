#pragma once

namespace zettestplugin {

/// Tries to change the files of the folder ZET_TEST_VICTIM, which has a file "letter" and a folder "empty",
/// in every way there is, itself and in a shell, and then to write settings and temporary files of its own.
/// Prints a line about each: "delete: refused", for example.
void ChangeFiles();

} // namespace zettestplugin
