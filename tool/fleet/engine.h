// Talks to a ClickHouse server over HTTP. It loads libcurl when the first server is asked: the command starts
// without it.
//
// One thread at a time may use it.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace ckscribe {

// what() is a sentence that says what went wrong and names the server.
struct EngineError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Engine {
public:
    // `url` has the form "http://[user:password@]host:8123/[?database=...]". Throws EngineError when there is
    // no libcurl, or when `url` is neither http nor https.
    explicit Engine(const std::string& url);
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    // Returns the whole answer to a query. Throws EngineError.
    std::string Ask(std::string_view query);

    // Inserts rows, which are lines of JSON. When it returns, the server has them; with several servers, each
    // row is on the server that keeps it. Throws EngineError; the engine may then have some of the rows.
    void Insert(std::string_view table, std::string_view rows);

    // Returns the table that has all calls: "calls_all" if it exists (it spreads calls over several servers),
    // else "calls". Throws EngineError, also if the server is no ClickHouse.
    std::string_view Table();

private:
    struct Connection;

    std::string Send(const std::string& parameters, std::string_view body);

    std::string address;
    std::string_view table;
    std::unique_ptr<Connection> connection;
};

}  // namespace ckscribe
