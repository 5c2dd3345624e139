#include <zetcore/config/ThrowError.h>

#include <zetcore/config/Localizer.h>

namespace zetcore::config {

error::error(const std::string& localisedText, int errorLevel)
    : std::runtime_error(localisedText), level(errorLevel)
{}

error::~error() = default;

void ThrowError(std::string_view key, int level)
{
    throw error(Localizer::Get().Localize(key), level);
}

void ThrowInvalidTypeConversion()
{
    ThrowError("$$$/zetcore/utility/Error/InvalidTypeConversion=Invalid type conversion.", 1);
}

} // namespace zetcore::config
