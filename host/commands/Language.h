#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The language of what the module and its dialogs say. Texts of the command line itself are English.
namespace zetaudiopluginmanager {

/// The names of the string tables to look for, best first. Takes language tags ("de-CH", "zh-Hans-CN") and
/// POSIX locale names ("de_CH.UTF-8"); empty for anything else, "C" and "POSIX" included. Any thread.
std::vector<std::string> TablesForLanguage(std::string_view language);

/// The user's language as the system has it; empty when it has none. Any thread.
std::string SystemLanguage();

/// Loads the best string table, `<name>.txt` in the folder `lang` beside the program or in
/// `../share/zetaudiopluginhostui/lang`. Without one the default texts stay: true only where they are in that
/// language (English). Throws `std::runtime_error` naming file and line of a malformed table. Main thread.
bool LoadLanguage(std::string_view language);

/// The languages that there are tables for, sorted. Any thread.
std::vector<std::string> AvailableLanguages();

} // namespace zetaudiopluginmanager
