#include "tool/fleet/engine.h"

#include <fmt/format.h>

#include <algorithm>

#ifdef CKSCRIBE_HAS_CURL
#include <curl/curl.h>
#include <dlfcn.h>
#endif

#include "tool/harmless_text.h"

namespace ckscribe {

namespace {

// Returns the address without the name and the password that it may hold.
std::string PublicAddress(const std::string& url) {
    const std::size_t scheme = url.find("://");
    const std::size_t host = scheme == url.npos ? 0 : scheme + 3;
    // A password with a slash in it makes a wrong address. It stays hidden even then.
    std::string shown = url.substr(0, url.find('?'));
    const std::size_t at = shown.rfind('@');
    if (at != shown.npos && at >= host) shown.erase(host, at + 1 - host);
    return Harmless(shown);
}

// Returns as much of an answer as a sentence can hold.
std::string FirstLine(const std::string& answer) {
    constexpr std::size_t kShown = 300;
    return Harmless(answer.substr(0, std::min(answer.find('\n'), kShown)));
}

}  // namespace

#ifdef CKSCRIBE_HAS_CURL

namespace {

// Curl holds the functions of libcurl. Calls of the variadic one pass exactly the type that the option asks
// for.
struct Curl {
    decltype(&::curl_easy_init) init = nullptr;
    decltype(&::curl_easy_cleanup) cleanup = nullptr;
    decltype(&::curl_easy_setopt) set = nullptr;
    decltype(&::curl_easy_perform) perform = nullptr;
    decltype(&::curl_easy_getinfo) get = nullptr;
    decltype(&::curl_easy_strerror) describe = nullptr;
    decltype(&::curl_slist_append) append = nullptr;
    decltype(&::curl_slist_free_all) freeList = nullptr;
};

template <class Function>
bool Find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

// Both libraries have the same functions. They differ in the library that they use for TLS.
const Curl* LoadCurl() {
    static const Curl* const loaded = []() -> const Curl* {
        static Curl curl;
        for (const char* const name : {"libcurl.so.4", "libcurl-gnutls.so.4"}) {
            void* const library = dlopen(name, RTLD_NOW | RTLD_LOCAL);
            if (library == nullptr) continue;
            if (Find(library, "curl_easy_init", curl.init) &&
                Find(library, "curl_easy_cleanup", curl.cleanup) &&
                Find(library, "curl_easy_setopt", curl.set) &&
                Find(library, "curl_easy_perform", curl.perform) &&
                Find(library, "curl_easy_getinfo", curl.get) &&
                Find(library, "curl_easy_strerror", curl.describe) &&
                Find(library, "curl_slist_append", curl.append) &&
                Find(library, "curl_slist_free_all", curl.freeList))
                return &curl;
        }
        return nullptr;
    }();
    return loaded;
}

std::size_t TakeAnswer(char* bytes, std::size_t size, std::size_t count, void* answer) {
    static_cast<std::string*>(answer)->append(bytes, size * count);
    return size * count;
}

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char character : text) {
        const bool isPlain = (character >= 'a' && character <= 'z') ||
                             (character >= 'A' && character <= 'Z') ||
                             (character >= '0' && character <= '9') || character == '_';
        if (isPlain) {
            escaped += character;
        } else {
            escaped += fmt::format("%{:02X}", static_cast<unsigned char>(character));
        }
    }
    return escaped;
}

}  // namespace

struct Engine::Connection {
    const Curl& curl;
    CURL* const handle = curl.init();
    // Without this header, libcurl first asks the server whether it takes a long body, and waits for the
    // answer.
    curl_slist* const headers = curl.append(nullptr, "Expect:");
    std::string url;

    explicit Connection(const Curl& functions) : curl(functions) {}
    ~Connection() {
        curl.freeList(headers);
        curl.cleanup(handle);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
};

Engine::Engine(const std::string& url) : address(PublicAddress(url)) {
    if (!url.starts_with("http://") && !url.starts_with("https://"))
        throw EngineError(
            fmt::format("{} is no address of a server: it begins with http:// or https://.", address));
    const Curl* const curl = LoadCurl();
    if (curl == nullptr)
        throw EngineError(
            fmt::format("{} cannot be asked: libcurl.so.4 is not there. Install libcurl4.", address));
    connection = std::make_unique<Connection>(*curl);
    if (connection->handle == nullptr) throw EngineError("libcurl cannot be used: there is no memory.");
    connection->url = url;
    if (url.find('?') == url.npos)
        connection->url += url.find('/', url.find("://") + 3) == url.npos ? "/?" : "?";
}

Engine::~Engine() = default;

std::string Engine::Send(const std::string& parameters, std::string_view body) {
    constexpr long kLongestConnect = 20;
    constexpr long kLongestAnswer = 3600;
    const Curl& curl = connection->curl;
    CURL* const handle = connection->handle;
    const char last = connection->url.back();
    const std::string url = connection->url + (last == '?' || last == '&' ? "" : "&") + parameters;
    std::string answer;
    char reason[CURL_ERROR_SIZE] = "";
    curl.set(handle, CURLOPT_URL, url.c_str());
    curl.set(handle, CURLOPT_PROTOCOLS_STR, "http,https");
    curl.set(handle, CURLOPT_POST, 1L);
    curl.set(handle, CURLOPT_POSTFIELDS, body.data());
    curl.set(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    curl.set(handle, CURLOPT_HTTPHEADER, connection->headers);
    curl.set(handle, CURLOPT_WRITEFUNCTION, &TakeAnswer);
    curl.set(handle, CURLOPT_WRITEDATA, static_cast<void*>(&answer));
    curl.set(handle, CURLOPT_ERRORBUFFER, static_cast<char*>(reason));
    curl.set(handle, CURLOPT_CONNECTTIMEOUT, kLongestConnect);
    curl.set(handle, CURLOPT_TIMEOUT, kLongestAnswer);
    curl.set(handle, CURLOPT_NOSIGNAL, 1L);
    // Names and passwords may stand in ~/.netrc: no list of processes shows them there.
    curl.set(handle, CURLOPT_NETRC, static_cast<long>(CURL_NETRC_OPTIONAL));
    curl.set(handle, CURLOPT_USERAGENT, "ckscribe");
    const CURLcode code = curl.perform(handle);
    if (code != CURLE_OK)
        throw EngineError(
            fmt::format("{} does not answer: {}.", address, *reason != '\0' ? reason : curl.describe(code)));
    long status = 0;
    curl.get(handle, CURLINFO_RESPONSE_CODE, &status);
    if (status != 200)
        throw EngineError(fmt::format("{} refuses with status {}: {}", address, status, FirstLine(answer)));
    return answer;
}

std::string Engine::Ask(std::string_view query) {
    // With wait_end_of_query the server holds the answer back until it is whole, and an error comes before
    // the first row.
    return Send("wait_end_of_query=1&output_format_json_quote_64bit_integers=0", query);
}

void Engine::Insert(std::string_view into, std::string_view rows) {
    // With insert_distributed_sync a server that spreads rows answers only when the servers that keep them
    // have them.
    Send("insert_distributed_sync=1&query=" + Escaped(fmt::format("INSERT INTO {} FORMAT JSONEachRow", into)),
         rows);
}

#else

struct Engine::Connection {};
Engine::Engine(const std::string& url) : address(PublicAddress(url)) {
    throw EngineError(fmt::format("{} cannot be asked: this ckscribe was built without libcurl.", address));
}
Engine::~Engine() = default;
std::string Engine::Ask(std::string_view) { return ""; }
void Engine::Insert(std::string_view, std::string_view) {}

#endif

std::string_view Engine::Table() {
    if (!table.empty()) return table;
    const std::string answer = Ask("EXISTS TABLE calls_all FORMAT TabSeparated");
    // Any other server for HTTP may take rows with status 200, too, and lose them.
    if (answer != "0\n" && answer != "1\n")
        throw EngineError(fmt::format("{} is no ClickHouse. It answers: {}", address, FirstLine(answer)));
    table = answer == "1\n" ? "calls_all" : "calls";
    return table;
}

}  // namespace ckscribe
