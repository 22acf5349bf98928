// The build embeds these queries of share/ckscribe/clickhouse/queries/. {table:Identifier} and {since:UInt64}
// stand for the table and for the first moment in nanoseconds: newer servers fill them in themselves, older
// ones do not.
#pragma once

#include <string_view>

namespace ckscribe::engine_queries {

extern const std::string_view kTotals;
extern const std::string_view kLatency;
extern const std::string_view kErrors;
extern const std::string_view kUnfinished;
extern const std::string_view kSessions;
extern const std::string_view kLogins;
extern const std::string_view kSlots;
extern const std::string_view kKeys;
extern const std::string_view kRepetitions;
extern const std::string_view kPauses;

}  // namespace ckscribe::engine_queries
