// A ClickHouse server, over HTTP. The library that talks HTTP (libcurl) is loaded when the first server is
// asked, so that the command starts without it.
//
// Used by one thread at a time.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace ckscribe {

// What went wrong, as a sentence that names the server.
struct EngineError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Engine {
public:
    // `url`: "http://[user:password@]host:8123/[?database=...]". Throws EngineError where there is no libcurl
    // or `url` is none of http or https.
    explicit Engine(const std::string& url);
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    // The answer to a query, once it is whole. Throws EngineError.
    std::string Ask(std::string_view query);

    // Inserts rows, lines of JSON. When it returns, the server has them; with several servers, the one that
    // keeps each row has it. Throws EngineError: some rows may have been inserted then.
    void Insert(std::string_view table, std::string_view rows);

    // The table that has all calls: "calls_all", which spreads them over several servers, where it is, else
    // "calls". Throws EngineError.
    std::string_view Table();

private:
    struct Connection;

    std::string Send(const std::string& parameters, std::string_view body);

    std::string address;
    std::string_view table;
    std::unique_ptr<Connection> connection;
};

}  // namespace ckscribe
