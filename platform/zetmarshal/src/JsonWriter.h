#pragma once

#include <string>
#include <string_view>

#include <zetcore/serialization/Value.h>

namespace zetmarshal {

/// The value's JSON, for putting together a message; as `ToJson`, with `depth` levels around it.
void AppendJson(std::string& text, const zetcore::serialization::ValuePtr& value, std::size_t depth);
/// Quoted and escaped. Bytes that are not valid UTF-8 stay as they are.
void AppendJsonString(std::string& text, std::string_view bytes);

} // namespace zetmarshal
