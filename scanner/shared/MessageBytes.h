#pragma once

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>

#include <zetaudiofilterhost/PluginLocator.h>

/// The values of a message between supervisor and worker, one behind the other, in the machine's own order
/// (both ends are the same program).
namespace zetaudiofilterscan {

class MessageWriter
{
  public:
    template<typename Number>
    requires std::is_integral_v<Number>
    void Integer(Number number)
    {
        char raw[sizeof number];
        std::memcpy(raw, &number, sizeof number);
        bytes.append(raw, sizeof number);
    }
    void Flag(bool flag) { Integer<std::uint8_t>(flag ? 1 : 0); }
    /// The type must have fewer than 256 values.
    template<typename Enum>
    requires std::is_enum_v<Enum>
    void Choice(Enum value) { Integer(static_cast<std::uint8_t>(value)); }
    void Size(std::size_t size) { Integer(static_cast<std::uint32_t>(size)); }
    void Text(std::string_view text);
    /// Writes UTF-8, or, where that would not give the same units back, unit by unit.
    void Wide(std::wstring_view text);
    void Locator(const zetaudiofilterhost::PluginLocator& locator);

    std::string Take() { return std::move(bytes); }

  private:
    std::string bytes;
};

/// Reads what `MessageWriter` wrote. Every read checks, and throws `std::runtime_error` that names the field.
class MessageReader
{
  public:
    explicit MessageReader(std::string_view message) : rest(message) {}

    template<typename Number>
    requires std::is_integral_v<Number> Number Integer(const char* field)
    {
        Number number = 0;
        std::memcpy(&number, Take(sizeof number, field).data(), sizeof number);
        return number;
    }
    bool Flag(const char* field);
    /// Values above `last` are wrong.
    template<typename Enum>
    requires std::is_enum_v<Enum> Enum Choice(const char* field, Enum last)
    {
        const auto byte = Integer<std::uint8_t>(field);
        if (byte > static_cast<std::uint8_t>(last))
            Wrong(field);
        return static_cast<Enum>(byte);
    }
    std::uint32_t Size(const char* field) { return Integer<std::uint32_t>(field); }
    std::string Text(const char* field);
    std::wstring Wide(const char* field);
    zetaudiofilterhost::PluginLocator Locator(const char* field);
    /// Bytes left over are wrong, too.
    void End() const;

    [[noreturn]] static void Wrong(const char* field);

  private:
    std::string_view Take(std::size_t size, const char* field);

    std::string_view rest;
};

} // namespace zetaudiofilterscan
