#pragma once

namespace zettestplugin {

/// Asks the helper process that all modules in this module's folder share; starts it when there is none.
/// False when the helper ends before it has answered.
bool AskHelper();

} // namespace zettestplugin
