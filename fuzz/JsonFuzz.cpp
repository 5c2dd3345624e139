// Reads JSON values. A value that was read must be the same after it is written and read again. All other
// input must be refused with the place of the error.
#include <stdexcept>
#include <string>

#include <zetmarshal/JsonValue.h>

#include "FuzzTarget.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    zetcore::serialization::ValuePtr value;
    try {
        value = zetmarshal::FromJson(zetfuzz::Text(data, size));
    } catch (const std::runtime_error& error) {
        zetfuzz::Require(std::string_view(error.what()).starts_with("this is no good JSON, at byte "),
                         "the error says where", error.what());
        return 0;
    }
    zetfuzz::Require(value != nullptr, "there is a value");
    const std::string written = zetmarshal::ToJson(value);
    zetfuzz::Require(written.find('\n') == std::string::npos, "a value is one line");
    zetfuzz::Require(zetmarshal::ToJson(zetmarshal::FromJson(written)) == written,
                     "a value written again reads the same", written);
    return 0;
}
