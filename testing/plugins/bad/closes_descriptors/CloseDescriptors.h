#pragma once

namespace zettestplugin {

/// Closes everything that this process has open, including its standard streams and the pipes of others.
void CloseDescriptors();

} // namespace zettestplugin
