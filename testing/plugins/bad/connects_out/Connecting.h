#pragma once

namespace zettestplugin {

/// Tries to connect to this machine's port ZET_TEST_PORT. Returns the outcome as words.
const char* ConnectOut();

} // namespace zettestplugin
