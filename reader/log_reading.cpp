#include "reader/log_reading.h"

#include <sys/stat.h>

#include <algorithm>
#include <condition_variable>
#include <ctime>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

#include "reader/byte_buffer.h"
#include "reader/call_joiner.h"
#include "reader/log_blocks.h"
#include "reader/log_copies.h"
#include "reader/log_family.h"
#include "reader/log_order.h"
#include "reader/log_parser.h"

namespace ckscribe {

namespace {

// At most so many blocks of a log are in memory.
constexpr std::size_t kBlocks = 8;
// If so many of them wait for a parser, the thread that reads parses one of them first.
constexpr std::size_t kWaitingBlocks = 2;

// A Piece is a block of a log on its way through the threads.
struct Piece {
    enum class State : std::uint8_t { kRead, kBeingParsed, kParsed };

    LogBlock block;
    FoundInText found;
    std::size_t done = 0;  // how much of the block was taken apart
    State state = State::kRead;
};

LogParser::Rest RestOf(const LogBlock& block) {
    return block.endsFile ? LogParser::Rest::kIsThere : LogParser::Rest::kComes;
}

// Reads one log, its files one after the other. A second thread reads blocks. Both threads parse them, each
// the first that waits, and the caller's thread gets what they find in the order of the log.
class LogReading {
public:
    LogReading(const std::vector<std::string>& paths, const LogFamily& family) : blocks(paths, family) {
        for (std::size_t i = 0; i < kBlocks; ++i) freePieces.push_back(std::make_unique<Piece>());
    }

    // Gives each block, and what was found in it, to `take` on this thread.
    template <class Take>
    void Run(const Take& take) {
        std::thread reading([this] { ReadAndParse(); });
        try {
            while (std::unique_ptr<Piece> piece = NextParsed()) {
                Continue(*piece);
                take(std::as_const(piece->block), piece->found);
                EndContinuing(*piece);
                const std::lock_guard lock(mutex);
                freePieces.push_back(std::move(piece));
                changed.notify_one();
            }
        } catch (...) {
            // The sink has thrown: the other thread stops.
            {
                const std::lock_guard lock(mutex);
                isStopped = true;
            }
            changed.notify_one();
            reading.join();
            throw;
        }
        reading.join();
    }

private:
    void ReadAndParse() {
        std::unique_lock lock(mutex);
        while (!isStopped) {
            Piece* const unparsed = FirstUnparsed();
            const bool mayRead = !isRead && !freePieces.empty();
            if (mayRead && (unparsed == nullptr || CountOfUnparsed() < kWaitingBlocks)) {
                std::unique_ptr<Piece> piece = std::move(freePieces.back());
                freePieces.pop_back();
                lock.unlock();
                const bool isThere = blocks.Read(piece->block);
                lock.lock();
                if (isThere) {
                    piece->state = Piece::State::kRead;
                    pieces.push_back(std::move(piece));
                } else {
                    isRead = true;
                }
                changed.notify_one();
            } else if (unparsed != nullptr) {
                Parse(*unparsed, readerParser, lock);
            } else if (isRead) {
                return;
            } else {
                changed.wait(lock);
            }
        }
    }

    // Returns the first piece, which is parsed, or null when there are no more.
    std::unique_ptr<Piece> NextParsed() {
        std::unique_lock lock(mutex);
        while (true) {
            if (!pieces.empty() && pieces.front()->state == Piece::State::kParsed) {
                std::unique_ptr<Piece> piece = std::move(pieces.front());
                pieces.pop_front();
                return piece;
            }
            if (Piece* const unparsed = FirstUnparsed()) {
                Parse(*unparsed, parser, lock);
            } else if (isRead && pieces.empty()) {
                return nullptr;
            } else {
                changed.wait(lock);
            }
        }
    }

    void Parse(Piece& piece, LogParser& with, std::unique_lock<std::mutex>& lock) {
        piece.state = Piece::State::kBeingParsed;
        lock.unlock();
        piece.done = with.Parse(piece.block.text, RestOf(piece.block), piece.found);
        lock.lock();
        piece.state = Piece::State::kParsed;
        changed.notify_one();
    }

    Piece* FirstUnparsed() const {
        for (const std::unique_ptr<Piece>& piece : pieces) {
            if (piece->state == Piece::State::kRead) return piece.get();
        }
        return nullptr;
    }
    std::size_t CountOfUnparsed() const {
        return static_cast<std::size_t>(std::ranges::count_if(
            pieces, [](const std::unique_ptr<Piece>& piece) { return piece->state == Piece::State::kRead; }));
    }

    // If a record goes on behind the end of its block, its beginning moves in front of the next block, and
    // that block is parsed again.
    void Continue(Piece& piece) {
        if (carried.Size() == 0) return;
        carried.Append(piece.block.text);
        piece.done = parser.Parse(carried.View(), RestOf(piece.block), piece.found);
    }
    void EndContinuing(const Piece& piece) {
        if (carried.Size() != 0) {
            carried.DropFront(piece.done);
        } else if (piece.done < piece.block.text.size()) {
            carried.Assign(piece.block.text.substr(piece.done));
        }
    }

    LogBlocks blocks;
    LogParser parser;
    LogParser readerParser;
    ByteBuffer carried;

    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::unique_ptr<Piece>> pieces;  // in the order of the log
    std::vector<std::unique_ptr<Piece>> freePieces;
    bool isRead = false;
    bool isStopped = false;
};

// Finds out when a log was made, as far as its records say.
struct LogTimes {
    LogOrder order;
    std::int64_t lastWritten = 0;
    Moment lastRecord;

    // Returns the day of the first record of the new format, or nothing when there is none.
    std::optional<std::int64_t> FirstDay(std::optional<std::int64_t> date) const {
        if (!order.LastDay()) return std::nullopt;
        return date.value_or(LocalDayOf(lastWritten)) - *order.LastDay();
    }
    void Take(const LogBlock& block, const Record& record) {
        if (record.format != LogFormat::kOldText) lastWritten = block.writtenAt;
        lastRecord = record.End();
    }
};

// Reports how much was read.
class Progress {
public:
    Progress(const std::vector<std::string>& paths, const ReadingOptions& options)
        : tell(options.onProgress) {
        for (const std::string& path : paths) {
            struct stat status {};
            // Only a regular file has a size, and only a regular file can be opened twice.
            if (path != "-" && stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode))
                progress.size += static_cast<std::uint64_t>(status.st_size);
        }
        if (options.needsDates) progress.size *= 2;
    }

    void Take(const LogBlock& block) {
        progress.bytesRead = bytesOfFilesBefore + block.bytesRead;
        if (block.endsFile) bytesOfFilesBefore += block.bytesRead;
        if (tell) tell(progress);
    }

private:
    const std::function<void(const ReadingProgress&)>& tell;
    ReadingProgress progress;
    std::uint64_t bytesOfFilesBefore = 0;
};

// Reads a log only for its times.
LogTimes Survey(const std::vector<std::string>& paths, const LogFamily& family, Progress& progress) {
    LogTimes times;
    const auto ignore = [](UnreadableStretch&) {};
    LogReading(paths, family).Run([&](const LogBlock& block, FoundInText& found) {
        times.order.Take(found, ignore, [&](const Record& record) { times.Take(block, record); });
        if (block.endsFile) times.order.EndFile(ignore);
        progress.Take(block);
    });
    return times;
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
    // Offsets of time zones change only where a quarter of an hour begins, therefore the system is asked once
    // for each quarter. Asking for each moment takes long.
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
    LogCopies copies;
    if (options.needsDates) copies.Replace(paths);
    std::vector<FileReading> files(paths.size());
    Progress progress(paths, options);

    for (const LogFamily& family : FamiliesOf(given)) {
        LogTimes times;
        sink.OnLogBegin(family);
        if (options.needsDates) {
            const LogTimes known = Survey(paths, family, progress);
            const std::optional<std::int64_t> firstDay = known.FirstDay(options.date);
            if (firstDay) times.order.SetFirstDay(*firstDay);
            sink.OnLogSurveyed(InUtc(known.lastRecord, firstDay));
        }
        CallJoiner joiner;
        LogReading(paths, family).Run([&](const LogBlock& block, FoundInText& found) {
            FileReading& file = files[block.file];
            file.bytes += block.bytes;
            file.records += found.records.size();
            file.error = block.error;
            const auto giveStretch = [&](UnreadableStretch& stretch) {
                stretch.place.file = block.file;
                sink.OnUnreadable(stretch);
            };
            times.order.Take(found, giveStretch, [&](const Record& record) {
                times.Take(block, record);
                joiner.Take(record, block.file, sink);
            });
            joiner.KeepTexts();
            if (block.endsFile) times.order.EndFile(giveStretch);
            progress.Take(block);
        });
        joiner.Finish(sink);
        sink.OnLogEnd(times.FirstDay(options.date));
    }
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (files[i].error.empty()) files[i].error = copies.ErrorOf(i);
    }
    return files;
}

}  // namespace ckscribe
