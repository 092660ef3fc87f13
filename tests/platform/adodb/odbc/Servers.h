// Database servers that tests start for themselves, from Debian's packages: on loopback, on a free
// port, with a folder of their own, as a user of the packages' where the tests run as root.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace norvel::adodb {

class TestServer {
  public:
    virtual ~TestServer();
    TestServer(const TestServer&) = delete;
    TestServer& operator=(const TestServer&) = delete;

    static constexpr const char* user = "prova";
    static constexpr const char* password =
        "se;gre{}ta=è1"; // everything that strings may trip over
    static constexpr const char* database = "azienda";

    int port() const { return port_; }
    // A connection string as hosts write it, by driver; the user's password and others' apart.
    std::string connection(const std::string& withPassword = password) const;
    // One whose string names the dialect, where the server has one: MySql.
    virtual std::string dialectConnection() const = 0;
    virtual bool isPostgres() const = 0;

    void stop();  // at once, as a machine that loses power
    void start(); // the same data, the same port; nothing where it runs
    // It neither answers nor goes away, as behind a network cable that was pulled.
    void freeze() const;
    void thaw() const;

  protected:
    TestServer();
    void settle(const char* systemUser); // the folder becomes that user's
    // Runs a program to its end as the server's user; raises what it said where it failed.
    void run(const std::vector<std::string>& command) const;
    void launch(const std::vector<std::string>& command);
    void launchAgain();
    void waitFor(const std::function<bool()>& ready) const;
    virtual std::string driver() const = 0;
    virtual bool ready() const = 0;
    std::string path(const std::string& name) const { return (folder_ / name).string(); }

    std::filesystem::path folder_;
    int port_ = 0;
    int signal_ = 9; // that ends it as a power cut would

  private:
    void reservePort();
    void tellAll(int signal) const;
    pid_t spawn(const std::vector<std::string>& command, const std::string& output) const;
    uid_t uid_ = 0;
    gid_t gid_ = 0;
    std::vector<std::string> command_;
    pid_t process_ = -1;
    int reservation_ = -1; // a socket on the server's port
};

// The server of this process, started at the first call: "mariadb" or "postgresql". Raises
// std::runtime_error where it cannot be had.
TestServer& testServer(const std::string& name);

// The names of the servers that this run is to try: all, or those in NR_SERVERS.
std::vector<std::string> serverNames();

} // namespace norvel::adodb
