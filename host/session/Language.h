#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The language of the module and its dialogs. The texts of the command line itself are English.
namespace zetaudiopluginmanager {

/// The names of the string tables to look for, best first. `language` is a language tag ("de-CH",
/// "zh-Hans-CN") or a POSIX locale name ("de_CH.UTF-8"). For anything else, and for "C" and "POSIX", the
/// result is empty. Any thread.
std::vector<std::string> TablesForLanguage(std::string_view language);

/// The user's language as the system knows it. Empty when the system knows none. Any thread.
std::string SystemLanguage();

/// Loads the best string table, `<name>.txt` in the folder `lang` beside the program or in
/// `../share/zetaudiopluginhostui/lang`. Without a table the default texts stay, which are English. So the
/// result is true when a table was loaded, or when the language is English. Throws `std::runtime_error`,
/// which names file and line, for a malformed table. Main thread.
bool LoadLanguage(std::string_view language);

/// The languages that have a table, sorted. Any thread.
std::vector<std::string> AvailableLanguages();

} // namespace zetaudiopluginmanager
