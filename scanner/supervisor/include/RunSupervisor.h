#pragma once

namespace zetaudiofilterscan {

/// Runs this process as the supervisor of one scan: tells the host its port, serves its connection, has the
/// plug-ins scanned by workers, and ends the process, with one of `ExitCode`, when the connection closes,
/// when nobody connects within 90 seconds (debug-database key "zetaudiofilterscan.ConnectTimeoutSeconds",
/// from the environment only), or when a plug-in has failed for good. Main thread.
[[noreturn]] void RunSupervisor();

} // namespace zetaudiofilterscan
