// A server that speaks as much of SQL Server's wire protocol (TDS 7.4) as a driver needs to log in,
// send texts and read rows. It runs no SQL: it writes down what it is sent and answers what the
// test says.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace norvel::adodb {

// Tokens of an answer. Source: Microsoft's [MS-TDS].
class TdsAnswer {
  public:
    // One row of codice int, nome nvarchar(40), importo decimal(10,2), emessa datetime, attivo bit,
    // and one of NULLs behind it.
    void rows();
    void error(std::int32_t number, const std::string& text);
    void loginAccepted();
    void done(std::uint16_t status);
    std::string bytes;

    void byte(unsigned value) { bytes += static_cast<char>(value); }
    void number(std::uint64_t value, int size);
    void shortText(std::string_view ascii); // its length in a byte, UTF-16

  private:
    void wideText(std::string_view ascii);
    void column(std::string_view type, std::string_view name);
};

class TdsServer {
  public:
    TdsServer();
    ~TdsServer();
    TdsServer(const TdsServer&) = delete;
    TdsServer& operator=(const TdsServer&) = delete;

    // "Provider=SQLOLEDB;…", as hosts have it.
    std::string connection() const;
    std::vector<std::string> texts() const; // the statements that came, those of the log-in apart
    std::atomic<bool> silent{false};        // queries get no answer until they are called off
    std::atomic<bool> refuses{false};       // queries are refused
    std::atomic<bool> refusesUsers{false};
    std::atomic<int> attentions{0}; // queries that were called off

  private:
    struct Packet {
        int type = 0;
        std::string data;
    };
    void listen();
    void serve(int socket);
    bool readPacket(int socket, Packet& packet) const;
    static void send(int socket, const std::string& tokens);
    void answer(int socket, const Packet& packet);

    int listening_ = -1;
    int port_ = 0;
    std::atomic<bool> over_{false};
    mutable std::mutex mutex_;
    std::vector<std::string> texts_;
    std::vector<int> sockets_;
    std::vector<std::thread> threads_;
    std::thread listener_;
};

} // namespace norvel::adodb
