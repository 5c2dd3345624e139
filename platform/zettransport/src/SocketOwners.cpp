#include "SocketOwners.h"

#include <array>
#include <cstring>
#include <vector>

#include <boost/asio/ip/address.hpp>
#include <zetcore/string/ParseNumber.h>

namespace zettransport {

namespace ip = boost::asio::ip;
using zetcore::string::ParseNumber;

namespace {

constexpr std::size_t localField = 1;
constexpr std::size_t remoteField = 2;
constexpr std::size_t userField = 7;
constexpr std::size_t inodeField = 9;

std::vector<std::string_view> FieldsOf(std::string_view line)
{
    std::vector<std::string_view> fields;
    for (;;) {
        const auto begin = line.find_first_not_of(' ');
        if (begin == std::string_view::npos)
            return fields;
        line.remove_prefix(begin);
        const auto end = line.find(' ');
        fields.push_back(line.substr(0, end));
        if (end == std::string_view::npos)
            return fields;
        line.remove_prefix(end);
    }
}

/// The address lies in memory in network order. The table prints each 32 bits of it as a number of the
/// machine.
template<std::size_t groups>
std::optional<std::array<unsigned char, groups * 4>> ParseAddressBytes(std::string_view text)
{
    std::array<unsigned char, groups * 4> bytes{};
    for (std::size_t group = 0; group < groups; ++group) {
        const auto number = ParseNumber<std::uint32_t>(text.substr(group * 8, 8), 16);
        if (!number)
            return std::nullopt;
        std::memcpy(bytes.data() + group * 4, &*number, 4);
    }
    return bytes;
}

std::optional<ip::address> ParseAddress(std::string_view text)
{
    if (text.size() == 8) {
        if (const auto bytes = ParseAddressBytes<1>(text))
            return ip::address_v4(*bytes);
    } else if (text.size() == 32) {
        if (const auto bytes = ParseAddressBytes<4>(text)) {
            const ip::address_v6 address(*bytes);
            if (address.is_v4_mapped())
                return ip::make_address_v4(ip::v4_mapped, address);
            return address;
        }
    }
    return std::nullopt;
}

std::optional<ip::tcp::endpoint> ParseEndpoint(std::string_view text)
{
    const auto colon = text.find(':');
    if (colon == std::string_view::npos)
        return std::nullopt;
    const auto address = ParseAddress(text.substr(0, colon));
    const auto port = ParseNumber<std::uint16_t>(text.substr(colon + 1), 16);
    if (!address || !port)
        return std::nullopt;
    return ip::tcp::endpoint(*address, *port);
}

} // namespace

std::optional<std::uint32_t> FindSocketOwner(std::string_view table, const ip::tcp::endpoint& local,
                                             const ip::tcp::endpoint& remote)
{
    while (!table.empty()) {
        const auto end = table.find('\n');
        const auto fields = FieldsOf(table.substr(0, end));
        table.remove_prefix(end == std::string_view::npos ? table.size() : end + 1);
        if (fields.size() <= inodeField || fields[inodeField] == "0")
            continue;
        if (ParseEndpoint(fields[localField]) == local && ParseEndpoint(fields[remoteField]) == remote)
            if (const auto user = ParseNumber<std::uint32_t>(fields[userField]))
                return user;
    }
    return std::nullopt;
}

bool MayOwnOtherEnd(std::uint32_t user, std::string_view tables, const ip::tcp::endpoint& ours,
                    const ip::tcp::endpoint& others)
{
    if (const auto owner = FindSocketOwner(tables, others, ours))
        return *owner == user;
    return !FindSocketOwner(tables, ours, others);
}

} // namespace zettransport
