#pragma once

#include <clocale>
#include <string>

namespace zetui::ui {

/// Puts the process's locale back when it ends. Qt takes the user's locale for the whole process when it
/// starts, and the host's own numbers would then be written with a comma in some countries. Main thread.
class LocaleKeeper
{
  public:
    LocaleKeeper()
    {
        if (const char* name = std::setlocale(LC_ALL, nullptr))
            before = name;
    }
    ~LocaleKeeper()
    {
        if (!before.empty())
            std::setlocale(LC_ALL, before.c_str());
    }
    LocaleKeeper(const LocaleKeeper&) = delete;
    LocaleKeeper& operator=(const LocaleKeeper&) = delete;

  private:
    std::string before;
};

} // namespace zetui::ui
