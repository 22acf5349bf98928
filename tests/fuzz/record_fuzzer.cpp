// This fuzzer makes calls of the library and reads their records back. An input is a format, a function's
// name and a line feed, a result, and the words of the call. Behind them comes what stands in the one page
// that the words may point into, before the call and after it (see Input below). These properties hold for
// any function, arguments and result:
// - the target gets the words, the application gets the result, and only the target changes the memory;
// - a call has a start record and an end record, whole, with nothing between or behind them;
// - both have an event, which a JSON parser reads back to the same values;
// - each record names the function and the result. It has the children that the function's records have, with
//   the numbers, bytes and structures of the words and the memory, and with masks for secrets;
// - reader/ makes one call of them, with the same values.

#include <dlfcn.h>
#include <fcntl.h>
#include <p11-kit/pkcs11.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "front/vendor_words.h"
#include "functions/pkcs11_names.h"
#include "tests/calls/scripted_target.h"
#include "tests/faults/arguments_of_functions.h"
#include "tests/fuzz/call_memory.h"
#include "tests/fuzz/event_reader.h"
#include "tests/fuzz/expected_records.h"
#include "tests/fuzz/read_back.h"
#include "tests/fuzz/record_reader.h"

namespace {

void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

// An input gives one byte after the other, and zeros behind its end.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : data(data), size(size) {}

    unsigned Byte() {
        if (size == 0) return 0;
        --size;
        return *data++;
    }
    CK_ULONG Short() {
        const CK_ULONG low = Byte();
        return low | CK_ULONG{Byte()} << 8;
    }
    CK_ULONG Long() {
        const CK_ULONG low = Short();
        return low | Short() << 16;
    }

    // Returns a name up to the end of its line.
    std::string Name() {
        constexpr std::size_t kLongestName = 64;
        std::string name;
        while (size != 0 && name.size() < kLongestName) {
            const char character = static_cast<char>(Byte());
            if (character == '\n') break;
            name += character;
        }
        return name;
    }

    CK_RV Result() {
        switch (Byte() % 4) {
            case 0:
                return CKR_OK;
            case 1:
                return CKR_BUFFER_TOO_SMALL;
            case 2:
                return CKR_LookupTable[Byte() % std::size(CKR_LookupTable)].value;
            default:
                return Long();
        }
    }

    // Returns a word of a call or of memory: a number, or an address in, at the end of, in front of or behind
    // the page.
    CK_ULONG Word() {
        switch (Byte() % 8) {
            case 0:
                return 0;
            case 1:
                return Short();
            case 2:
                return CallMemory::kPage + Short() % CallMemory::kSize;
            case 3:
                return CallMemory::kEnd - Byte();
            case 4:
                return CallMemory::kPage - Byte();
            case 5:
                return ~CK_ULONG{0} - Byte();
            case 6:
                return CK_ULONG{1} << (48 + Byte() % 16);
            default:
                return Long() << 50 | Long() | CK_ULONG{1} << 48;
        }
    }

    // Returns words for places of the memory, at most 15.
    std::vector<std::pair<CK_ULONG, CK_ULONG>> Words() {
        std::vector<std::pair<CK_ULONG, CK_ULONG>> words(Byte() % 16);
        for (auto& [address, word] : words) {
            address = CallMemory::kEnd - Short() % CallMemory::kSize;
            word = Word();
        }
        return words;
    }

    void FillWithRest(CallMemory& memory) const { memory.Fill(data, size); }

private:
    const std::uint8_t* data;
    std::size_t size;
};

// `target` is the call as the target gets it, on the thread that makes the call.
struct {
    const char* function = nullptr;
    CallWords words{};
    std::size_t count = 0;
    CK_RV rv = CKR_OK;
    std::vector<std::pair<CK_ULONG, CK_ULONG>> returned;
    bool isCalled = false;
} target;

CallMemory& Memory() {
    static CallMemory memory;
    return memory;
}

template <class... Parameters, std::size_t... i>
CK_RV CallWithWords(CK_RV (*function)(Parameters...), const CallWords& words, std::index_sequence<i...>) {
    return function((Parameters)words[i]...);
}

template <class... Parameters>
CK_RV CallWithWords(CK_RV (*function)(Parameters...), const CallWords& words) {
    return CallWithWords(function, words, std::index_sequence_for<Parameters...>());
}

// Each Caller calls an exported function by its real type. The order is that of ArgumentsOfFunctions().
using Caller = CK_RV (*)(void* function, const CallWords& words);
const Caller kCallers[] = {
#define C_EVERY_ROW(Name, ...)                                                        \
    [](void* function, const CallWords& words) {                                      \
        return CallWithWords(reinterpret_cast<decltype(&C_##Name)>(function), words); \
    },
#define CA_EVERY_ROW(Name)                                                                 \
    [](void* function, const CallWords& words) {                                           \
        return CallWithWords(reinterpret_cast<ckscribe::VendorFunction>(function), words); \
    },
#include "functions/functions.def"
};

// A LoggedApplication has the library loaded, with a log of its own.
class LoggedApplication {
public:
    LoggedApplication() {
        if (mkdtemp(directory.data()) == nullptr) std::abort();
        setenv("WendrafilConfigurationPath", directory.c_str(), 1);
        WriteConfiguration();
        log.Open(LogPath());
        events.Open(EventsPath());
        // The target stays loaded when the library unloads it. Therefore changes of the format are quick.
        if (dlopen(SCRIPTED_TARGET, RTLD_NOW | RTLD_LOCAL) == nullptr) std::abort();
        void* const library = dlopen(CKSCRIBE_LIBRARY, RTLD_NOW | RTLD_LOCAL);
        if (library == nullptr) std::abort();
        for (const FunctionArguments& function : ArgumentsOfFunctions())
            functions.push_back(dlsym(library, function.function.c_str()));
        finalize = reinterpret_cast<void (*)()>(dlsym(library, "CkLogSpecialFinalize"));
    }
    // Every byte of the log was compared with the expected bytes. Therefore no secret stands there. No other
    // file was written.
    ~LoggedApplication() {
        for (const auto& entry : std::filesystem::directory_iterator(directory)) {
            const bool isKnown = entry.path() == LogPath() || entry.path() == EventsPath() ||
                                 entry.path() == ConfigurationPath();
            Require(isKnown, "nothing but the log and the events are written");
        }
        std::error_code ignored;
        std::filesystem::remove_all(directory, ignored);
    }

    void UseFormat(bool isNew) {
        if (isNew == isNewFormat) return;
        isNewFormat = isNew;
        WriteConfiguration();
        finalize();
    }

    CK_RV Call(std::size_t function, const CallWords& words) const {
        return kCallers[function](functions[function], words);
    }

    // Returns the text that the file has got since the last call.
    std::string TakeLog() { return log.Take(); }
    std::string TakeEvents() { return events.Take(); }

private:
    // A Growing is a file that grows.
    class Growing {
    public:
        void Open(const std::string& path) {
            file = open(path.c_str(), O_RDWR | O_CREAT, 0600);
            if (file < 0) std::abort();
        }
        std::string Take() {
            struct stat status;
            if (fstat(file, &status) != 0) std::abort();
            const off_t size = status.st_size;
            std::string text(static_cast<std::size_t>(size - taken), '\0');
            if (pread(file, text.data(), text.size(), taken) != static_cast<ssize_t>(text.size()))
                std::abort();
            taken = size;
            if (size > kLargest && ftruncate(file, 0) == 0) taken = 0;
            return text;
        }

    private:
        static constexpr off_t kLargest = 1 << 26;

        int file = -1;
        off_t taken = 0;
    };

    std::string EventsPath() const { return directory + "/events.jsonl"; }
    std::string LogPath() const { return directory + "/calls.log"; }

    std::string ConfigurationPath() const { return directory + "/Wendrafil.conf"; }

    void WriteConfiguration() const {
        std::ofstream(ConfigurationPath())
            << "CkLog2 = {\n LibUNIX64 = " SCRIPTED_TARGET ";\n Enabled = 1;\n NewFormat = " << isNewFormat
            << ";\n File = " << LogPath() << ";\n Error = " << directory
            << "/errors.log;\n Events = " << EventsPath() << ";\n HideData = 0;\n}\n";
    }

    std::string directory = std::filesystem::temp_directory_path().string() + "/ckscribe.XXXXXX";
    bool isNewFormat = true;
    Growing log;
    Growing events;
    std::vector<void*> functions;
    void (*finalize)() = nullptr;
};

CallWords WordsOfCall(const FunctionArguments& function, Input& input) {
    // Functions that return a list store its address through any pointer that they get.
    static CK_ULONG placeOfList;
    CallWords words;
    for (std::size_t i = 0; i < words.size(); ++i) {
        words[i] = i < function.arguments.size() ? input.Word() : 0x1111 * (i + 1);
        const bool isList =
            i < function.arguments.size() && function.arguments[i].kind == ArgumentKind::kFunctionList;
        if (isList && words[i] != 0) words[i] = reinterpret_cast<CK_ULONG>(&placeOfList);
    }
    return words;
}

// Returns the function's place in ArgumentsOfFunctions(). A name that no function has stands for some
// function.
std::size_t IndexOfFunction(const std::string& name) {
    const std::vector<FunctionArguments>& all = ArgumentsOfFunctions();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const FunctionArguments& each) { return each.function == name; });
    if (found != all.end()) return static_cast<std::size_t>(found - all.begin());
    return std::accumulate(name.begin(), name.end(), std::size_t{0},
                           [](std::size_t sum, char character) {
                               return sum * 31 + static_cast<unsigned char>(character);
                           }) %
           all.size();
}

void RequireThatTargetGot(const FunctionArguments& function, const CallWords& words) {
    Require(target.isCalled && function.function == target.function, "the target is called");
    for (std::size_t i = 0; i < std::min(target.count, words.size()); ++i) {
        const bool isByte =
            i < function.arguments.size() && function.arguments[i].kind == ArgumentKind::kBoolean;
        Require(target.words[i] == (isByte ? words[i] & 0xff : words[i]), "the target gets the words");
    }
}

}  // namespace

CK_RV AnswerCall(const char* function, const TargetWord* arguments, std::size_t count) {
    target.function = function;
    target.count = std::min(count, target.words.size());
    std::copy_n(arguments, target.count, target.words.begin());
    target.isCalled = true;
    Memory().SetWords(target.returned);
    return target.rv;
}

void TargetIsLoaded() {}
void TargetIsUnloaded() {}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static LoggedApplication application;
    [[maybe_unused]] static const bool isComplete = (RequireRowForEachLoggedFunction(), true);
    CallMemory& memory = Memory();

    Input input(data, size);
    const bool isNew = input.Byte() % 2 != 0;
    const std::size_t index = IndexOfFunction(input.Name());
    const FunctionArguments& function = ArgumentsOfFunctions()[index];
    target = {};
    target.rv = input.Result();
    const CallWords words = WordsOfCall(function, input);
    const auto given = input.Words();
    target.returned = input.Words();
    input.FillWithRest(memory);
    memory.SetWords(given);

    application.UseFormat(isNew);
    const ExpectedRecord start = ExpectedStart(function, words, memory);
    const std::string memoryBefore = memory.Contents();
    const CK_RV rv = application.Call(index, words);
    const std::string log = application.TakeLog();
    const std::string events = application.TakeEvents();

    // COMPAT: Two functions answer some calls themselves.
    CK_RV expectedRv = target.rv;
    if (function.function == "C_GetFunctionStatus") expectedRv = CKR_FUNCTION_NOT_SUPPORTED;
    const bool isListOfVendor = function.function == "CA_GetFunctionList";
    if (isListOfVendor && words[0] == 0) expectedRv = CKR_DATA_INVALID;
    Require(rv == expectedRv, "the application gets the result");
    if (function.function == "C_GetFunctionStatus" || (isListOfVendor && words[0] == 0)) {
        Require(!target.isCalled, "the target is not called");
    } else {
        RequireThatTargetGot(function, words);
    }

    RecordReader reader(log, isNew);
    if (!isListOfVendor) {
        const ExpectedRecord end = ExpectedEnd(function, words, memory, rv);
        reader.Read(start);
        reader.Read(end);
#ifdef CKSCRIBE_HAS_READER
        RequireReadBack(log, function.function, start, end);
        RequireEventsReadBack(events, function.function, start, end);
#endif
        RequireEvents(events, function.function, start, end, rv);
    } else {
        Require(events.empty(), "the list of the vendor's functions has no events");
    }
    reader.ReadEnd();

    // Only the target changes the memory. What the target did, done again to the memory as it was, gives the
    // same.
    const std::string memoryAfter = memory.Contents();
    memory.Fill(reinterpret_cast<const std::uint8_t*>(memoryBefore.data()), memoryBefore.size());
    if (target.isCalled) memory.SetWords(target.returned);
    Require(memory.Contents() == memoryAfter, "only the target changes the memory");
    return 0;
}
