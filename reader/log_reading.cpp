#include "reader/log_reading.h"

#include <fcntl.h>
#include <unistd.h>

#include <condition_variable>
#include <cstring>
#include <ctime>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

#include "reader/call_joiner.h"
#include "reader/log_family.h"
#include "reader/log_parser.h"
#include "reader/log_source.h"
#include "reader/log_text.h"

namespace ckscribe {

namespace {

constexpr std::size_t kBlock = 1 << 20;
constexpr std::size_t kBatches = 4;

// A piece of a log, with the records that were found in it.
struct Batch {
    LogText text;
    LogParser::Found found;
    std::uint32_t file = 0;
    bool endsFile = false;
    std::string error;
    std::uint64_t bytes = 0;      // unpacked, of this piece
    std::uint64_t bytesRead = 0;  // of the file so far
};

// Batches that wait for the other thread. Each side blocks while it has nothing to do.
class BatchQueue {
public:
    // Null when the queue is closed and empty.
    std::unique_ptr<Batch> Take() {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return isClosed || !batches.empty(); });
        if (batches.empty()) return nullptr;
        std::unique_ptr<Batch> batch = std::move(batches.front());
        batches.pop_front();
        return batch;
    }
    void Put(std::unique_ptr<Batch> batch) {
        {
            const std::lock_guard lock(mutex);
            batches.push_back(std::move(batch));
        }
        changed.notify_one();
    }
    void Close() {
        {
            const std::lock_guard lock(mutex);
            isClosed = true;
        }
        changed.notify_all();
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::unique_ptr<Batch>> batches;
    bool isClosed = false;
};

// One log: its files one after the other.
class LogReading {
public:
    LogReading(const std::vector<std::string>& paths, const LogFamily& family,
               std::optional<std::int64_t> firstDay)
        : paths(paths), family(family) {
        if (firstDay) parser.SetFirstDay(*firstDay);
    }

    // Gives each batch to `take` on this thread, while another one reads.
    void Run(const std::function<void(Batch&)>& take) {
        for (std::size_t i = 0; i < kBatches; ++i) freeBatches.Put(std::make_unique<Batch>());
        std::thread reading([this] {
            for (const std::uint32_t file : family) ReadFile(file);
            readBatches.Close();
        });
        try {
            while (std::unique_ptr<Batch> batch = readBatches.Take()) {
                take(*batch);
                freeBatches.Put(std::move(batch));
            }
        } catch (...) {
            // The sink wants no more.
            freeBatches.Close();
            while (readBatches.Take() != nullptr) continue;
            reading.join();
            throw;
        }
        reading.join();
    }

    // After Run.
    std::optional<std::int64_t> LastDay() const { return parser.LastDay(); }
    std::int64_t LastWritten() const { return lastWritten; }
    const Moment& LastRecord() const { return lastRecord; }

private:
    void ReadFile(std::uint32_t file) {
        LogSource source;
        bool isOpen = source.Open(paths[file]);
        std::vector<char> block(kBlock);
        std::unique_ptr<Batch> before;
        LogText rest;
        bool isAtEnd = false;
        while (!isAtEnd) {
            std::unique_ptr<Batch> batch = freeBatches.Take();
            if (batch == nullptr) return;
            batch->found.records.clear();
            batch->found.stretches.clear();
            batch->text.TakeRest(rest);
            std::size_t count = 0;
            while (isOpen && count < kBlock) {
                const std::size_t more = source.Read(block.data(), kBlock - count);
                if (more == 0) {
                    isOpen = false;
                    break;
                }
                batch->text.Add({block.data(), more});
                count += more;
            }
            isAtEnd = !isOpen;
            if (isAtEnd) batch->text.End();
            const LogParser::Rest more = isAtEnd                   ? LogParser::Rest::kIsThere
                                         : batch->text.IsTooLong() ? LogParser::Rest::kIsTooLong
                                                                   : LogParser::Rest::kComes;
            const std::size_t done = parser.Parse(batch->text.View(), more, batch->found);
            if (isAtEnd) parser.EndFile(batch->found);
            for (const Record& record : batch->found.records) {
                if (record.format == LogFormat::kNewText) lastWritten = source.WrittenAt();
                lastRecord = record.time;
            }
            rest.TakeBehind(batch->text, done);
            batch->file = file;
            batch->endsFile = isAtEnd;
            batch->error = source.Error();
            batch->bytes = count;
            batch->bytesRead = source.BytesRead();
            readBatches.Put(std::move(batch));
        }
    }

    const std::vector<std::string>& paths;
    const LogFamily& family;
    LogParser parser;
    std::int64_t lastWritten = 0;
    Moment lastRecord;
    BatchQueue freeBatches;
    BatchQueue readBatches;
};

// Standard input can be read once only; this is a file with the same bytes.
std::string CopyOfStandardInput() {
    const char* const directory = std::getenv("TMPDIR");
    std::string path = std::string(directory != nullptr ? directory : "/tmp") + "/ckscribe.XXXXXX";
    const int copy = mkostemp(path.data(), O_CLOEXEC);
    if (copy < 0) return "-";
    std::vector<char> block(kBlock);
    while (true) {
        const ssize_t count = read(STDIN_FILENO, block.data(), block.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0 || write(copy, block.data(), static_cast<std::size_t>(count)) != count) break;
    }
    close(copy);
    return path;
}

std::optional<std::int64_t> FirstDayOf(const LogReading& reading, std::optional<std::int64_t> date) {
    if (!reading.LastDay()) return std::nullopt;
    return date.value_or(LocalDayOf(reading.LastWritten())) - *reading.LastDay();
}

}  // namespace

std::int64_t LocalDayOf(std::int64_t secondsUtc) {
    const auto time = static_cast<std::time_t>(secondsUtc);
    std::tm local{};
    localtime_r(&time, &local);
    return DaysSince1970(local.tm_year + 1900, static_cast<unsigned>(local.tm_mon + 1),
                         static_cast<unsigned>(local.tm_mday));
}

Moment InUtc(const Moment& moment, std::optional<std::int64_t> firstDay) {
    Moment utc = moment;
    if (moment.scale == TimeScale::kDayOfLog) {
        if (!firstDay) return moment;
        utc.nanoseconds += *firstDay * kSecondsPerDay * kNanosecondsPerSecond;
    } else if (moment.scale != TimeScale::kLocal) {
        return moment;
    }
    // Asking the system for each moment takes long; within a quarter of an hour no clock is changed but at
    // its beginning.
    constexpr std::int64_t kQuarter = 900;
    thread_local std::int64_t lastQuarter = -1;
    thread_local std::int64_t lastOffset = 0;
    const std::int64_t seconds = utc.nanoseconds / kNanosecondsPerSecond;
    if (seconds / kQuarter != lastQuarter) {
        const auto asUtc = static_cast<std::time_t>(seconds);
        std::tm calendar{};
        gmtime_r(&asUtc, &calendar);
        calendar.tm_isdst = -1;
        lastOffset = static_cast<std::int64_t>(mktime(&calendar)) - seconds;
        lastQuarter = seconds / kQuarter;
    }
    utc.nanoseconds += lastOffset * kNanosecondsPerSecond;
    utc.scale = TimeScale::kUtc;
    return utc;
}

std::vector<FileReading> ReadLogs(const std::vector<std::string>& given, const ReadingOptions& options,
                                  LogSink& sink) {
    std::vector<std::string> paths = given;
    std::string copy;
    if (options.needsDates) {
        for (std::string& path : paths) {
            if (path == "-") path = copy = CopyOfStandardInput();
        }
    }
    std::vector<FileReading> files(paths.size());
    ReadingProgress progress;
    for (const std::string& path : paths) {
        LogSource source;
        if (path != "-" && source.Open(path)) progress.size += source.Size();
    }
    std::uint64_t bytesOfFilesBefore = 0;

    for (const LogFamily& family : FamiliesOf(given)) {
        std::optional<std::int64_t> firstDay;
        sink.OnLogBegin(family);
        if (options.needsDates) {
            LogReading reading(paths, family, std::nullopt);
            reading.Run([](Batch&) {});
            firstDay = FirstDayOf(reading, options.date);
            sink.OnLogSurveyed(InUtc(reading.LastRecord(), firstDay));
        }
        LogReading reading(paths, family, firstDay);
        CallJoiner joiner;
        reading.Run([&](Batch& batch) {
            FileReading& file = files[batch.file];
            file.bytes += batch.bytes;
            file.records += batch.found.records.size();
            file.error = batch.error;
            for (UnreadableStretch& stretch : batch.found.stretches) {
                stretch.place.file = batch.file;
                sink.OnUnreadable(stretch);
            }
            for (const Record& record : batch.found.records) joiner.Take(record, batch.file, sink);
            progress.bytesRead = bytesOfFilesBefore + batch.bytesRead;
            if (batch.endsFile) bytesOfFilesBefore += batch.bytesRead;
            if (options.onProgress) options.onProgress(progress);
        });
        joiner.Finish(sink);
        sink.OnLogEnd(FirstDayOf(reading, options.date));
    }
    if (!copy.empty()) unlink(copy.c_str());
    return files;
}

}  // namespace ckscribe
