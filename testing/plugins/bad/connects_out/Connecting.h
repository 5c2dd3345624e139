#pragma once

namespace zettestplugin {

/// What came of opening a connection to this machine's port ZET_TEST_PORT, as words.
const char* ConnectOut();

} // namespace zettestplugin
