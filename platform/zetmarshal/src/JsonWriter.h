#pragma once

#include <string>
#include <string_view>

#include <zetcore/serialization/Value.h>

namespace zetmarshal {

/// Appends the value's JSON to a message. It throws as `ToJson` does. `depth` is the number of levels around
/// the value.
void AppendJson(std::string& text, const zetcore::serialization::ValuePtr& value, std::size_t depth);
/// Appends the text quoted and escaped. Bytes that are not valid UTF-8 stay as they are.
void AppendJsonString(std::string& text, std::string_view bytes);

} // namespace zetmarshal
