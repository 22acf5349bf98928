#include <fmt/format.h>

#include <string_view>

#include "tool/call_line.h"
#include "tool/convert/call_writers.h"
#include "tool/report_json.h"

namespace ckscribe {

namespace {

constexpr std::string_view kHead =
    "time,process,thread,run,call,function,result,rv,ns,slot,session,object,user,mechanism,in,out,file,"
    "line\n";

// Returns a cell that holds a text. A spreadsheet runs a cell that begins like a formula; a quote in front
// makes it a text.
std::string Cell(std::string_view text) {
    std::string cell;
    if (!text.empty() && std::string_view("=+-@\t\r").find(text.front()) != text.npos) cell = "'";
    cell += text;
    if (cell.find_first_of(",\"\r\n") == cell.npos) return cell;
    std::string quoted = "\"";
    for (const char character : cell) {
        if (character == '"') quoted += '"';
        quoted += character;
    }
    return quoted + "\"";
}

template <class Number>
std::string Cell(const std::optional<Number>& number) {
    return number ? fmt::format("{}", *number) : "";
}

class TableWriter : public CallWriter {
public:
    explicit TableWriter(const std::vector<std::string>& paths) : paths(paths) { fmt::print("{}", kHead); }

    void OnCall(const Call& call) override {
        const Moment time = InUtc(call.Time());
        const Place place = call.FirstPlace();
        const CallFields& fields = call.fields;
        std::string row = time.scale == TimeScale::kUtc ? IsoTime(time.nanoseconds) : "";
        const auto add = [&row](const std::string& cell) { (row += ',') += cell; };
        add(fmt::format("{}", call.process));
        add(Cell(call.thread));
        add(Cell(call.run));
        add(call.number != 0 ? fmt::format("{}", call.number) : "");
        add(Cell(call.Function()));
        add(Cell(call.result));
        add(Cell(call.rv));
        add(Cell(call.nanoseconds));
        add(Cell(fields.slot));
        add(Cell(fields.session));
        add(Cell(fields.object));
        add(Cell(fields.user));
        add(Cell(fields.mechanism));
        add(Cell(ValuesText(call.In())));
        add(Cell(ValuesText(call.Out())));
        add(Cell(paths[place.file]));
        add(fmt::format("{}", place.line));
        fmt::print("{}\n", row);
    }

private:
    const std::vector<std::string>& paths;
};

}  // namespace

std::unique_ptr<CallWriter> MakeTableWriter(const std::vector<std::string>& paths) {
    return std::make_unique<TableWriter>(paths);
}

}  // namespace ckscribe
