#include "tests/platform/adodb/odbc/TdsServer.h"

#include "platform/adodb/odbc/OdbcText.h"

#include <arpa/inet.h>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace norvel::adodb {

namespace {

enum PacketType { batch = 1, answerType = 4, attention = 6, login = 0x10, prelogin = 0x12 };
constexpr std::size_t headerSize = 8;
constexpr std::string_view collation("\x09\x04\xD0\x00\x34", 5);

bool readAll(int socket, char* to, std::size_t size) {
    while (size > 0) {
        const ssize_t got = ::recv(socket, to, size, 0);
        if (got <= 0) return false;
        to += got;
        size -= static_cast<std::size_t>(got);
    }
    return true;
}

} // namespace

void TdsAnswer::number(std::uint64_t value, int size) {
    for (int i = 0; i < size; ++i, value >>= 8U)
        byte(value & 0xFFU);
}

void TdsAnswer::wideText(std::string_view ascii) {
    for (const char c : ascii)
        number(static_cast<unsigned char>(c), 2);
}

void TdsAnswer::shortText(std::string_view ascii) {
    byte(static_cast<unsigned>(ascii.size()));
    wideText(ascii);
}

void TdsAnswer::column(std::string_view type, std::string_view name) {
    number(0, 4); // user type
    number(1, 2); // nullable
    bytes += type;
    shortText(name);
}

void TdsAnswer::rows() {
    byte(0x81);
    number(5, 2);
    column("\x26\x04", "codice");
    column(std::string("\xE7\x50\x00", 3).append(collation), "nome");
    column("\x6A\x09\x0A\x02", "importo");
    column("\x6F\x08", "emessa");
    column("\x68\x01", "attivo");
    byte(0xD1);
    byte(4);
    number(7, 4);
    number(10, 2);
    wideText("Citt");
    number(0xE0, 2); // à
    byte(9);
    byte(1); // positive
    number(123456, 8);
    byte(8);
    number(40615, 4);           // days from 1900-01-01
    number(12 * 3600 * 300, 4); // 300ths of a second
    byte(1);
    byte(1);
    byte(0xD1);
    byte(0);
    number(0xFFFF, 2);
    byte(0);
    byte(0);
    byte(0);
}

void TdsAnswer::error(std::int32_t errorNumber, const std::string& text) {
    TdsAnswer body;
    body.number(static_cast<std::uint32_t>(errorNumber), 4);
    body.byte(1);
    body.byte(16);
    body.number(text.size(), 2);
    body.wideText(text);
    body.shortText("prova");
    body.shortText("");
    body.number(1, 4);
    byte(0xAA);
    number(body.bytes.size(), 2);
    bytes += body.bytes;
}

void TdsAnswer::loginAccepted() {
    TdsAnswer body;
    body.byte(1);
    body.bytes += std::string("\x74\x00\x00\x04", 4);
    body.shortText("Microsoft SQL Server");
    body.bytes += std::string("\x0F\x00\x07\xD0", 4);
    byte(0xAD);
    number(body.bytes.size(), 2);
    bytes += body.bytes;
}

void TdsAnswer::done(std::uint16_t status) {
    byte(0xFD);
    number(status, 2);
    number(0, 2);
    number(0, 8);
}

TdsServer::TdsServer() {
    listening_ = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    if (::bind(listening_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
        ::listen(listening_, 8) == 0 &&
        ::getsockname(listening_, reinterpret_cast<sockaddr*>(&address), &length) == 0)
        port_ = ntohs(address.sin_port);
    listener_ = std::thread([this] { listen(); });
}

TdsServer::~TdsServer() {
    over_ = true;
    listener_.join();
    {
        const std::scoped_lock lock(mutex_);
        for (const int socket : sockets_)
            ::shutdown(socket, SHUT_RDWR);
    }
    for (std::thread& thread : threads_)
        thread.join();
    ::close(listening_);
}

std::string TdsServer::connection() const {
    return "Provider=SQLOLEDB;Data Source=127.0.0.1," + std::to_string(port_) +
           ";Initial Catalog=azienda;User ID=prova;Password=segretissima";
}

std::vector<std::string> TdsServer::texts() const {
    const std::scoped_lock lock(mutex_);
    return texts_;
}

void TdsServer::listen() {
    while (!over_) {
        pollfd waiting{listening_, POLLIN, 0};
        if (::poll(&waiting, 1, 20) <= 0) continue;
        const int socket = ::accept(listening_, nullptr, nullptr);
        if (socket < 0) continue;
        const std::scoped_lock lock(mutex_);
        sockets_.push_back(socket);
        threads_.emplace_back([this, socket] { serve(socket); });
    }
}

// A message may come in several packets; the last one says so.
bool TdsServer::readPacket(int socket, Packet& packet) const {
    packet.data.clear();
    for (;;) {
        char header[headerSize];
        if (!readAll(socket, header, headerSize)) return false;
        const auto* bytes = reinterpret_cast<const unsigned char*>(header);
        std::string data((std::size_t{bytes[2]} << 8U | bytes[3]) - headerSize, '\0');
        if (!readAll(socket, data.data(), data.size())) return false;
        packet.type = bytes[0];
        packet.data += data;
        if ((bytes[1] & 1U) != 0) return true;
    }
}

void TdsServer::send(int socket, const std::string& tokens) {
    const std::size_t size = tokens.size() + headerSize;
    std::string packet{static_cast<char>(answerType),
                       1,
                       static_cast<char>(size >> 8U),
                       static_cast<char>(size & 0xFFU),
                       0,
                       0,
                       1,
                       0};
    packet += tokens;
    ::send(socket, packet.data(), packet.size(), MSG_NOSIGNAL);
}

void TdsServer::serve(int socket) {
    Packet packet;
    while (readPacket(socket, packet))
        answer(socket, packet);
    ::close(socket);
}

void TdsServer::answer(int socket, const Packet& packet) {
    TdsAnswer reply;
    if (packet.type == prelogin) { // version; no encryption
        send(socket, std::string("\x00\x00\x0B\x00\x06\x01\x00\x11\x00\x01\xFF"
                                 "\x0F\x00\x07\xD0\x00\x00\x02",
                                 18));
        return;
    }
    if (packet.type == attention) {
        ++attentions;
        reply.done(0x20);
        return send(socket, reply.bytes);
    }
    if (packet.type == login) {
        if (refusesUsers) {
            reply.error(18456, "Login failed for user 'prova'.");
            reply.done(2);
            return send(socket, reply.bytes);
        }
        reply.loginAccepted();
        reply.done(0);
        return send(socket, reply.bytes);
    }
    std::uint32_t headers = 0;
    std::memcpy(&headers, packet.data.data(), sizeof headers);
    std::vector<SQLWCHAR> wide((packet.data.size() - headers) / 2);
    std::memcpy(wide.data(), packet.data.data() + headers, wide.size() * 2);
    const std::string text = odbcNarrow(wide.data(), wide.size());
    if (text.find("SELECT") == std::string::npos || text == "SELECT 1") {
        reply.done(0); // how the session is to be
        return send(socket, reply.bytes);
    }
    {
        const std::scoped_lock lock(mutex_);
        texts_.push_back(text);
    }
    if (silent) return;
    if (refuses) {
        reply.error(207, "Invalid column name 'manca'.");
        reply.done(2);
    } else {
        reply.rows();
        reply.done(0x10);
    }
    send(socket, reply.bytes);
}

} // namespace norvel::adodb
