#include "SocketSystem.h"

#include <cstddef>
#include <optional>
#include <vector>

#include <winsock2.h>

#include <windows.h>

#include <iphlpapi.h>

#include <zetcore/filesupport/handles/Handle.h>

namespace zettransport::sockets {

namespace {

using zetcore::filesupport::Handle;

/// Memory for a structure of variable size, aligned for any.
using Block = std::vector<std::max_align_t>;

Block BlockOf(DWORD bytes)
{
    return Block(bytes / sizeof(std::max_align_t) + 1);
}

Block ReadConnectionTable()
{
    DWORD bytes = 0;
    Block block;
    // The table may grow between two calls.
    for (int attempt = 0; attempt < 8; ++attempt) {
        const DWORD result = ::GetExtendedTcpTable(block.empty() ? nullptr : block.data(), &bytes, FALSE,
                                                   AF_INET, TCP_TABLE_OWNER_PID_CONNECTIONS, 0);
        if (result == NO_ERROR && !block.empty())
            return block;
        if (result != NO_ERROR && result != ERROR_INSUFFICIENT_BUFFER)
            return {};
        bytes += bytes / 4 + 256;
        block = BlockOf(bytes);
    }
    return {};
}

std::optional<DWORD> FindProcess(const Endpoint& local, const Endpoint& remote)
{
    if (!local.address().is_v4() || !remote.address().is_v4())
        return std::nullopt;
    const Block block = ReadConnectionTable();
    if (block.empty())
        return std::nullopt;
    const auto* table = reinterpret_cast<const MIB_TCPTABLE_OWNER_PID*>(block.data());
    const auto matches = [](DWORD address, DWORD port, const Endpoint& endpoint) {
        return ntohl(address) == endpoint.address().to_v4().to_uint() &&
               ntohs(static_cast<u_short>(port)) == endpoint.port();
    };
    for (DWORD i = 0; i < table->dwNumEntries; ++i) {
        const MIB_TCPROW_OWNER_PID& row = table->table[i];
        if (matches(row.dwLocalAddr, row.dwLocalPort, local) &&
            matches(row.dwRemoteAddr, row.dwRemotePort, remote))
            return row.dwOwningPid;
    }
    return std::nullopt;
}

/// Reads the user of a process: a block that begins with `TOKEN_USER`. It is empty when the system does not
/// say.
Block ReadUser(HANDLE process)
{
    HANDLE opened = nullptr;
    if (!::OpenProcessToken(process, TOKEN_QUERY, &opened))
        return {};
    const Handle token(opened);
    DWORD bytes = 0;
    ::GetTokenInformation(token.Get(), TokenUser, nullptr, 0, &bytes);
    if (bytes == 0)
        return {};
    Block block = BlockOf(bytes);
    if (!::GetTokenInformation(token.Get(), TokenUser, block.data(), bytes, &bytes))
        return {};
    return block;
}

PSID SidOf(const Block& user)
{
    return reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid;
}

} // namespace

bool BelongsToSameUser(const Endpoint& local, const Endpoint& remote)
{
    const std::optional<DWORD> processId = FindProcess(remote, local);
    if (!processId || *processId == 0)
        return true;
    if (*processId == ::GetCurrentProcessId())
        return true;
    const Handle process(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, *processId));
    // A user may always ask that much about the processes of the same user.
    if (!process.IsOpen())
        return ::GetLastError() != ERROR_ACCESS_DENIED;
    const Block theirs = ReadUser(process.Get());
    if (theirs.empty())
        return ::GetLastError() != ERROR_ACCESS_DENIED;
    const Block ours = ReadUser(::GetCurrentProcess());
    return ours.empty() || ::EqualSid(SidOf(theirs), SidOf(ours));
}

} // namespace zettransport::sockets
