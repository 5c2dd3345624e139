#pragma once

namespace zettestplugin {

/// How many processes have modules loaded that count, with this one. Counts it until it has called
/// `EndCounting` or ended, however it ends. The environment names the file by which they know each other.
int CountProcesses();
void EndCounting();

} // namespace zettestplugin
