#include "tests/platform/adodb/odbc/Servers.h"

#include "platform/adodb/Recordset.h"
#include "platform/runtime/Errore.h"

#include <arpa/inet.h>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <grp.h>
#include <map>
#include <memory>
#include <pwd.h>
#include <random>
#include <signal.h>
#include <sstream>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace norvel::adodb {

namespace {

using namespace std::chrono_literals;

constexpr auto longestStart = 120s; // of a server, on a machine that is busy otherwise
constexpr const char* folderPrefix = "nr_server_";

// Folders of programs that were killed and could not take theirs away. The name tells whose it is.
void removeOrphans() {
    std::error_code ignored;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::temp_directory_path(), ignored)) {
        const std::string name = entry.path().filename().string();
        if (!name.starts_with(folderPrefix)) continue;
        const pid_t owner = std::atoi(name.c_str() + std::string(folderPrefix).size());
        if (owner > 0 && ::kill(owner, 0) != 0 && errno == ESRCH)
            std::filesystem::remove_all(entry.path(), ignored);
    }
}

std::string contents(const std::string& file) {
    std::ifstream stream(file);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

} // namespace

TestServer::TestServer() {
    reservePort();
    removeOrphans();
    std::random_device random;
    const std::string mine = folderPrefix + std::to_string(::getpid()) + "_";
    do
        folder_ = std::filesystem::temp_directory_path() / (mine + std::to_string(random()));
    while (!std::filesystem::create_directory(folder_));
}

TestServer::~TestServer() {
    stop();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
    ::close(reservation_);
}

// The port stays bound here, too, without anybody listening: so no other program is given it before
// the server has it, nor while the server is stopped. Both sockets say that they may share it.
void TestServer::reservePort() {
    reservation_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int shared = 1;
    ::setsockopt(reservation_, SOL_SOCKET, SO_REUSEADDR, &shared, sizeof shared);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    if (::bind(reservation_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
        ::getsockname(reservation_, reinterpret_cast<sockaddr*>(&address), &length) != 0)
        throw std::runtime_error("no free port");
    port_ = ntohs(address.sin_port);
}

std::string TestServer::connection(const std::string& withPassword) const {
    return "Driver={" + driver() + "};Server=127.0.0.1;Port=" + std::to_string(port_) +
           ";Database=" + database + ";UID=" + user + ";PWD=\"" + withPassword + "\"";
}

void TestServer::settle(const char* systemUser) {
    if (::geteuid() != 0) return;
    const passwd* entry = ::getpwnam(systemUser);
    if (!entry) throw std::runtime_error(std::string("there is no user ") + systemUser);
    uid_ = entry->pw_uid;
    gid_ = entry->pw_gid;
    if (::chown(folder_.c_str(), uid_, gid_) != 0) throw std::runtime_error("chown");
}

pid_t TestServer::spawn(const std::vector<std::string>& command, const std::string& output) const {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& word : command)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    const pid_t parent = ::getpid();
    const pid_t child = ::fork();
    if (child != 0) return child;
    const int log = ::open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
    ::dup2(log, 1);
    ::dup2(log, 2);
    if (::chdir("/") != 0) ::_exit(126);
    if (uid_ != 0 && (::setgroups(0, nullptr) != 0 || ::setgid(gid_) != 0 || ::setuid(uid_) != 0))
        ::_exit(126);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL); // a killed test leaves no server behind
    if (::getppid() != parent) ::_exit(126);
    ::close_range(3, ~0U, 0); // the display's connection among others
    ::execvp(arguments[0], arguments.data());
    ::_exit(127);
}

void TestServer::run(const std::vector<std::string>& command) const {
    const std::string log = path("comandi.log");
    const pid_t child = spawn(command, log);
    int status = 0;
    if (::waitpid(child, &status, 0) != child || status != 0)
        throw std::runtime_error(command[0] + ": " + contents(log));
}

void TestServer::launch(const std::vector<std::string>& command) {
    command_ = command;
    launchAgain();
}

void TestServer::launchAgain() {
    process_ = spawn(command_, path("server.log"));
    waitFor([this] { return ready(); });
}

void TestServer::waitFor(const std::function<bool()>& done) const {
    const auto until = std::chrono::steady_clock::now() + longestStart;
    while (!done()) {
        int status = 0;
        if (::waitpid(process_, &status, WNOHANG) != 0 || std::chrono::steady_clock::now() > until)
            throw std::runtime_error(command_[0] + ": " + contents(path("server.log")));
        std::this_thread::sleep_for(20ms);
    }
}

void TestServer::stop() {
    if (process_ <= 0) return;
    ::kill(process_, signal_);
    thaw();
    ::waitpid(process_, nullptr, 0);
    process_ = -1;
}

void TestServer::start() {
    if (process_ <= 0) launchAgain();
}

// PostgreSQL's processes are each a group of its own.
void TestServer::tellAll(int signal) const {
    const std::string process = std::to_string(process_);
    ::kill(process_, signal);
    std::istringstream children(contents("/proc/" + process + "/task/" + process + "/children"));
    for (pid_t child = 0; children >> child;)
        ::kill(child, signal);
}

void TestServer::freeze() const {
    tellAll(SIGSTOP);
}

void TestServer::thaw() const {
    if (process_ > 0) tellAll(SIGCONT);
}

namespace {

bool canOpen(const std::string& connection) {
    try {
        makeConnection()->Open(connection);
        return true;
    } catch (const Errore&) {
        return false;
    }
}

class MariaDb : public TestServer {
  public:
    MariaDb() {
        settle("mysql");
        const std::string data = path("dati");
        // A server that starts clears its folder of temporary tables, others' in the same included.
        run({"mariadb-install-db", "--no-defaults", "--datadir=" + data,
             "--tmpdir=" + folder_.string(), "--auth-root-authentication-method=normal",
             "--skip-test-db"});
        const std::string first = path("primo.sql");
        std::ofstream(first) << "CREATE DATABASE " << database
                             << " CHARACTER SET utf8mb4;\nCREATE USER '" << user
                             << "'@'127.0.0.1' IDENTIFIED BY '" << password
                             << "';\nGRANT ALL ON *.* TO '" << user << "'@'127.0.0.1';\n";
        launch({"mariadbd", "--no-defaults", "--datadir=" + data, "--tmpdir=" + folder_.string(),
                "--socket=" + path("s"), "--port=" + std::to_string(port_),
                "--bind-address=127.0.0.1", "--skip-name-resolve",
                "--innodb-flush-log-at-trx-commit=2", "--innodb-buffer-pool-size=64M",
                "--character-set-server=utf8mb4", "--init-file=" + first});
    }
    std::string dialectConnection() const override {
        return "Driver={MySQL ODBC 5.1 Driver};Server=127.0.0.1;Port=" + std::to_string(port_) +
               ";Database=" + database + ";User=" + user + ";Password=\"" + password +
               "\";Option=3";
    }
    bool isPostgres() const override { return false; }

  protected:
    std::string driver() const override { return "MariaDB Unicode"; }
    bool ready() const override { return canOpen(connection()); }
};

class PostgreSql : public TestServer {
  public:
    PostgreSql() {
        settle("postgres");
        signal_ = SIGQUIT; // takes its children with it, at once and without a shutdown
        const std::string data = path("dati");
        const std::string programs = programFolder();
        const std::string secret = path("parola");
        std::ofstream(secret) << password;
        run({programs + "initdb", "-D", data, "-U", user, "-A", "scram-sha-256", "--pwfile", secret,
             "-E", "UTF8", "--locale=C.UTF-8", "-N"});
        launch({programs + "postgres", "-D", data, "-p", std::to_string(port_), "-c",
                "listen_addresses=127.0.0.1", "-c", "unix_socket_directories=", "-c", "fsync=off"});
    }
    std::string dialectConnection() const override { return connection(); }
    bool isPostgres() const override { return true; }

  protected:
    std::string driver() const override { return "PostgreSQL Unicode"; }
    bool ready() const override {
        if (created_) return canOpen(connection());
        std::string first = connection();
        first.replace(first.find(database), std::string(database).size(), "postgres");
        try {
            const auto connection = makeConnection();
            connection->Open(first);
            connection->Execute(std::string("CREATE DATABASE ") + database);
            created_ = true;
        } catch (const Errore&) {
            return false;
        }
        return true;
    }

  private:
    // Debian keeps the programs of each release in a folder of its own.
    static std::string programFolder() {
        for (const auto& entry : std::filesystem::directory_iterator("/usr/lib/postgresql"))
            if (std::filesystem::exists(entry.path() / "bin/initdb"))
                return (entry.path() / "bin").string() + "/";
        throw std::runtime_error("PostgreSQL is not installed");
    }
    mutable bool created_ = false;
};

} // namespace

TestServer& testServer(const std::string& name) {
    static std::map<std::string, std::unique_ptr<TestServer>> servers;
    auto& server = servers[name];
    if (!server) {
        if (name == "mariadb")
            server = std::make_unique<MariaDb>();
        else
            server = std::make_unique<PostgreSql>();
    }
    return *server;
}

std::vector<std::string> serverNames() {
    const char* chosen = std::getenv("NR_SERVERS");
    if (chosen && *chosen) return {chosen};
    return {"mariadb", "postgresql"};
}

} // namespace norvel::adodb
