#pragma once

#include <string>

#include "reference/CommandTexts.h"

/// Scripts with which shells complete the program's command line. They know commands, options and their
/// values from the parser's texts, and ask the program itself for what only it knows (`RunCompleteCommand`).
namespace zetaudiopluginmanager {

std::string WriteBashCompletion(const CommandText& program);
std::string WriteZshCompletion(const CommandText& program);
std::string WriteFishCompletion(const CommandText& program);

/// The program's list that holds the words of this kind. Empty where it has none.
std::string CompletionListOf(WordKind kind);

} // namespace zetaudiopluginmanager
