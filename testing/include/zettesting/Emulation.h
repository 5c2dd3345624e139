#pragma once

namespace zettesting {

/// True under Wine; false on Windows itself and on other systems. Where Wine does not do what Windows does, a
/// test asks this, names the reason and checks what it can.
bool IsWine();

} // namespace zettesting
