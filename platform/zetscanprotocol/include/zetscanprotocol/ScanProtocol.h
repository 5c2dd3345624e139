#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

/// Everything that the host and the scanner process must agree on: names here, the requests in
/// `ScanRequests.h`, the replies in `ScanInfo.h`. docs/scan-protocol.md describes the conversation.
namespace zetscanprotocol {

/// The shared block through which the scanner hands over its port and the host its trace volume.
inline constexpr char blockName[] = "ZETAudioFilterScan2";
inline constexpr std::size_t blockSize = 8;
/// Word 0: the listening port in the low 16 bits, 0 until the scanner listens. Written by the scanner.
inline constexpr std::size_t portWord = 0;
/// Word 1 (byte offset 4): the host's master trace volume, signed. Written by the host.
inline constexpr std::size_t traceVolumeWord = 1;

inline constexpr char loopbackAddress[] = "127.0.0.1";

inline constexpr char connectMethod[] = "com.quorvex.zetaudiofilterscan.Connect";
inline constexpr char beginScanMethod[] = "com.quorvex.zetaudiofilterscan.BeginScanForPlugins";
inline constexpr char getScanInfoMethod[] = "com.quorvex.zetaudiofilterscan.GetScanInfo";
inline constexpr char scanOneEntityMethod[] = "com.quorvex.zetaudiofilterscan.ScanOneEntity";
/// All of them, for whoever answers.
inline constexpr const char* methods[] = {connectMethod, beginScanMethod, getScanInfoMethod,
                                          scanOneEntityMethod};

/// Appended to the whole path of the plug-in settings file.
inline constexpr wchar_t resultFileSuffix[] = L".scan";

/// The entry of the debug database that says how many seconds one plug-in may take to scan, and what holds
/// without it. The scanner ends a plug-in that takes longer; the host shows the limit while it waits.
inline constexpr char entityTimeoutKey[] = "zetaudiofilterscan.EntityTimeoutSeconds";
inline constexpr std::chrono::seconds defaultEntityTimeout{60};

/// The entry of the debug database that says how many plug-ins the scanner loads at the same time, from 1 to
/// `mostWorkers`. Without it, the scanner chooses.
inline constexpr char workersKey[] = "zetaudiofilterscan.Workers";
inline constexpr unsigned mostWorkers = 16;

} // namespace zetscanprotocol
