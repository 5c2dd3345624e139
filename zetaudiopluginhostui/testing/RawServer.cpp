#include "testing/RawServer.h"

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/write.hpp>

namespace zetaudiopluginhostui {

namespace asio = boost::asio;
using asio::ip::tcp;

struct RawServer::State
{
    asio::io_context context;
    tcp::acceptor acceptor{context, {asio::ip::address_v4::loopback(), 0}};
    tcp::socket socket{context};
    std::string received;
};

RawServer::RawServer() : state(std::make_unique<State>()) {}

RawServer::~RawServer() = default;

std::uint16_t RawServer::Port() const
{
    return state->acceptor.local_endpoint().port();
}

void RawServer::Accept()
{
    state->socket = state->acceptor.accept();
    state->socket.set_option(tcp::no_delay(true));
}

std::optional<std::string> RawServer::NextFrame()
{
    // The host writes one header line, the length.
    boost::system::error_code error;
    std::string& received = state->received;
    const std::size_t header =
        asio::read_until(state->socket, asio::dynamic_buffer(received), "\r\n\r\n", error);
    if (error)
        return std::nullopt;
    const std::size_t length = std::stoul(received.substr(received.find(':') + 1));
    if (received.size() < header + length)
        asio::read(state->socket, asio::dynamic_buffer(received),
                   asio::transfer_exactly(header + length - received.size()), error);
    if (error)
        return std::nullopt;
    std::string frame = received.substr(header, length);
    received.erase(0, header + length);
    return frame;
}

void RawServer::Write(std::string_view bytes, std::size_t pieceSize)
{
    boost::system::error_code error;
    while (!bytes.empty() && !error) {
        const std::string_view piece = bytes.substr(0, pieceSize);
        bytes.remove_prefix(piece.size());
        asio::write(state->socket, asio::buffer(piece.data(), piece.size()), error);
    }
}

} // namespace zetaudiopluginhostui
