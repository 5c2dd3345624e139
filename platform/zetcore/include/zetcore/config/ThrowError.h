#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include <zetcore/Export.h>

namespace zetcore::config {

/// An error with a text for people, localised when it is thrown.
class ZETCORE_API error : public std::runtime_error
{
  public:
    error(const std::string& localisedText, int level);
    ~error() override;
    int Level() const noexcept { return level; }

  private:
    int level;
};

/// Throws `error` with the key's text. Level 1 is an error, 0 a warning.
[[noreturn]] ZETCORE_API void ThrowError(std::string_view key, int level);
/// Throws the error "$$$/zetcore/utility/Error/InvalidTypeConversion=Invalid type conversion.", level 1.
[[noreturn]] ZETCORE_API void ThrowInvalidTypeConversion();

} // namespace zetcore::config
