#include "dialogs/Terminal.h"

#include <cstdlib>

#include <zetcore/string/ParseNumber.h>

namespace zetui::dialogs {

int ColumnsOfEnvironment()
{
    constexpr int usual = 80;
    const char* const text = std::getenv("COLUMNS");
    const int columns = zetcore::string::ParseNumber<int>(text ? text : "").value_or(0);
    return columns > 0 ? columns : usual;
}

} // namespace zetui::dialogs
