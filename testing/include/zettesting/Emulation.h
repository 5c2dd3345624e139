#pragma once

namespace zettesting {

/// Whether this is Wine and not Windows itself. Where Wine does not do what Windows does, a test says so,
/// names the reason and checks what can be checked. False on other systems.
bool IsWine();

} // namespace zettesting
