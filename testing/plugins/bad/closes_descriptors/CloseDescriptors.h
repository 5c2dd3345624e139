#pragma once

namespace zettestplugin {

/// Closes whatever this process has open, standard streams and other people's pipes included.
void CloseDescriptors();

} // namespace zettestplugin
