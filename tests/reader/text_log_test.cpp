// Logs of the two text formats give the calls that they show.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "tests/reader/collected_calls.h"

namespace ckscribe {
namespace {

using Strings = std::vector<std::string>;

constexpr std::string_view kNewLog =
    "\n\n10:15:30 01234-567:STRTOpenSession {Slot=1 Flgs=4 }"
    "\n10:15:30 01234-567:FINIOpenSession CKR_OK100clks {Sesn=5 }"
    "\n\n10:15:31 01234-567:STRTLogin {Sesn=5 User=1 PIN=\"********\" }"
    "\n10:15:32 01234-567:FINILogin ***CKR_PIN_INCORRECT***200clks {}"
    "\n\n10:15:33 01234--03:STRTFindObjects_Init {Sesn=5 AttrList={CKA_CLASS=\"0300000000000000\" "
    "CKA_LABEL=\"a \"} b\" } }"
    "\n10:15:33 01234--03:FINIFindObjects_Init ***CKR_UNKNOWN 0x80000999***300clks {}"
    "\n\n10:15:34 01234-567:STRTSign_Init {Sesn=5 Mech=(CKM_RSA_PKCS,\"<null>\") Obj=7 }";

constexpr std::string_view kOldLog =
    "\nCommand(OpenSession, None, Start) PID:  1234  Time:  Sun Nov 15 10:15:30 2026\n"
    "\n{\n   SlotID(0x1);\n   Flags(0x4);\n}"
    "\nCommand(OpenSession, None, End, CKR_OK) PID:  1234  Time:  Sun Nov  1 10:15:31 2026\n"
    " // 0 clock cycles\n{\n   SessionHandle(0x5);\n}"
    "\nCommand(FindObjects, Init, Start) PID:  1234  Time:  Sun Nov 15 10:15:32 2026\n"
    "\n{\n   SessionHandle(0x5);\n   AttributeList\n   {\n      "
    "Attribute(CKA_CLASS,Value(Numeric\"03000000\"));\n"
    "      Attribute(CKA_LABEL,Value(SimpleText\"a\"b\"));\n   };\n}"
    "\nCommand(FindObjects, Init, End, CKR_UNKNOWN 0x80000999) PID:  1234  Time:  Sun Nov 15 10:15:32 2026\n"
    " // -7 clock cycles\n{\n}";

std::string Described(const Call& call) {
    std::string text(call.Function());
    text += call.hasStart ? " " + std::to_string(call.startPlace.line) : " -";
    text += call.hasEnd ? " " + std::to_string(call.endPlace.line) + " " + std::string(call.result) : " -";
    return text;
}

Strings CallsOf(const CollectedCalls& log) {
    Strings calls;
    for (const KeptCall& call : log.calls) calls.push_back(Described(call.Get()));
    return calls;
}

std::int64_t Seconds(const Moment& moment) { return moment.nanoseconds / kNanosecondsPerSecond; }

TEST(NewTextLog, SerialNumberOfHexadecimalDigitsIsReadAsAText) {
    const std::string blanks(31, ' ');
    const CollectedCalls log =
        ReadLog("\n10:15:30 01234-567:FINIGetTokenInfo CKR_OK1clks {Ptr=0x1 TokenInfo={\"t" + blanks +
                "\" \"m" + blanks +
                "\" \"model           \" \"0123456789abcdef\" Flgs=5 "
                "1 2 3 4 5 6 7 8 9 10 } }");
    ASSERT_EQ(log.calls.size(), 1U);
    const Value serial = log[0].Out().at(1).children.at(3);
    EXPECT_EQ(serial.name, "serialNumber");
    EXPECT_EQ(serial.bytes, "0123456789abcdef");
    EXPECT_EQ(serial.size, 16U);
    EXPECT_TRUE(serial.isText);
}

TEST(NewTextLog, LabelOfDigitsWhoseBytesAreNoText_IsText) {
    const auto attribute = [](const std::string& written) {
        const CollectedCalls log =
            ReadLog("\n10:15:30 01234-567:STRTFindObjects_Init {Sesn=1 AttrList={" + written + " } }");
        return log[0].In().at(1).children.at(0);
    };
    const Value label = attribute("CKA_LABEL=\"ec\"");
    EXPECT_EQ(label.bytes, "ec");
    EXPECT_EQ(label.size, 2U);
    EXPECT_TRUE(label.isText);
    EXPECT_EQ(attribute("CKA_APPLICATION=\"00ff\"").bytes, "00ff");
    EXPECT_EQ(attribute("CKA_LABEL=\"c3a9\"").bytes, "\xc3\xa9");
    EXPECT_EQ(attribute("CKA_ID=\"ec\"").bytes, "\xec");
    EXPECT_EQ(attribute("CKA_LABEL=\"ece\"").bytes, "ece");
}

TEST(NewTextLog, StartAndEndRecordsOfTheNewFormatBecomeCalls) {
    const CollectedCalls log = ReadLog(kNewLog);
    EXPECT_EQ(log.stretches.size(), 0U);
    EXPECT_EQ(CallsOf(log), (Strings{"C_OpenSession 3 4 CKR_OK", "C_Login 6 7 CKR_PIN_INCORRECT",
                                     "C_FindObjectsInit 9 10 CKR_UNKNOWN", "C_SignInit 12 -"}));
    EXPECT_EQ(log[0].process, 1234U);
    EXPECT_EQ(log[0].thread, 567);
    EXPECT_EQ(log[0].fields.slot, 1U);
    EXPECT_EQ(log[0].fields.session, 5U);
    EXPECT_EQ(log[0].start.scale, TimeScale::kDayOfLog);
    EXPECT_EQ(Seconds(log[1].start), (10 * 60 + 15) * 60 + 31);
    EXPECT_EQ(Seconds(log[1].end), (10 * 60 + 15) * 60 + 32);
    EXPECT_EQ(log[1].rv, 0xA0U);
    EXPECT_EQ(log[1].fields.user, 1U);
    EXPECT_EQ(log[2].thread, -3);
    EXPECT_EQ(log[2].rv, 0x80000999U);
    EXPECT_EQ(log[3].fields.mechanism, "CKM_RSA_PKCS");
    EXPECT_EQ(log[3].fields.object, 7U);
    EXPECT_FALSE(log[3].nanoseconds);
    const std::vector<Value> in = log[2].In();
    ASSERT_EQ(in.size(), 2U);
    ASSERT_EQ(in[1].children.size(), 2U);
    EXPECT_EQ(in[1].children[0].bytes, std::string("\3\0\0\0\0\0\0\0", 8));
    EXPECT_EQ(in[1].children[1].type, "CKA_LABEL");
    EXPECT_EQ(in[1].children[1].bytes, "a \"} b");
}

TEST(OldTextLog, StartAndEndRecordsOfTheOldFormatBecomeCalls) {
    const CollectedCalls log = ReadLog(kOldLog);
    EXPECT_EQ(log.stretches.size(), 0U);
    EXPECT_EQ(CallsOf(log), (Strings{"C_OpenSession 2 8 CKR_OK", "C_FindObjectsInit 13 23 CKR_UNKNOWN"}));
    EXPECT_FALSE(log[0].thread);
    EXPECT_EQ(log[0].process, 1234U);
    EXPECT_EQ(log[0].fields.session, 5U);
    EXPECT_EQ(log[0].start, (Moment{1'794'737'730 * kNanosecondsPerSecond, TimeScale::kLocal}));
    EXPECT_EQ(log[0].end, (Moment{1'793'528'131 * kNanosecondsPerSecond, TimeScale::kLocal}));
    EXPECT_EQ(log[1].rv, 0x80000999U);
    const std::vector<Value> in = log[1].In();
    ASSERT_EQ(in.size(), 2U);
    EXPECT_EQ(in[0].number, 5U);
    ASSERT_EQ(in[1].children.size(), 2U);
    EXPECT_EQ(in[1].children[0].bytes, std::string("\3\0\0\0", 4));
    EXPECT_EQ(in[1].children[1].bytes, "a\"b");
}

TEST(MixedLog, RecordsOfBothFormatsAndEventsInOneFileAreRead) {
    std::string text(kNewLog);
    text += kOldLog;
    text +=
        "\n{\"event\":\"start\",\"time\":\"2026-11-21T12:33:45Z\",\"run\":\"a-1\",\"pid\":1,\"tid\":2,"
        "\"call\":1,\"function\":\"C_Sign\",\"in\":[]}\n";
    const CollectedCalls log = ReadLog(text);
    EXPECT_EQ(log.stretches.size(), 0U);
    EXPECT_EQ(CallsOf(log),
              (Strings{"C_OpenSession 3 4 CKR_OK", "C_Login 6 7 CKR_PIN_INCORRECT",
                       "C_FindObjectsInit 9 10 CKR_UNKNOWN", "C_OpenSession 13 19 CKR_OK",
                       "C_FindObjectsInit 24 34 CKR_UNKNOWN", "C_SignInit 12 -", "C_Sign 38 -"}));
}

// Returns the places at which the records of a log end. A record ends in front of the beginning of the next
// one.
std::vector<std::size_t> EndsOfRecords(std::string_view log) {
    std::vector<std::size_t> ends;
    for (std::size_t i = 0; i < log.size(); ++i) {
        const bool isLast = i + 1 == log.size();
        const bool isEnd = log[i] == '}' && (isLast || log.substr(i + 1).starts_with("\n10:") ||
                                             log.substr(i + 1).starts_with("\n\n10:") ||
                                             log.substr(i + 1).starts_with("\nCommand("));
        if (isEnd) ends.push_back(i + 1);
    }
    return ends;
}

TEST(CutLog, LogThatEndsAnywhereGivesTheRecordsBeforeItsEnd) {
    for (const std::string_view whole : {kNewLog, kOldLog}) {
        const std::vector<std::size_t> ends = EndsOfRecords(whole);
        ASSERT_EQ(ends.size(), whole == kOldLog ? 4U : 7U);
        for (std::size_t size = 0; size < whole.size(); ++size) {
            const CollectedCalls log = ReadLog(whole.substr(0, size));
            std::size_t read = 0;
            for (const KeptCall& call : log.calls) read += call.Get().hasStart + call.Get().hasEnd;
            const auto expected = static_cast<std::size_t>(
                std::ranges::count_if(ends, [&](std::size_t end) { return end <= size; }));
            ASSERT_EQ(read, expected) << whole.substr(0, size);
            // The rest, if there is any, is one stretch.
            const std::size_t left = expected == 0 ? 0 : ends[expected - 1];
            const bool isBlank = whole.substr(left, size - left).find_first_not_of('\n') == whole.npos;
            ASSERT_EQ(log.stretches.size(), isBlank ? 0U : 1U) << whole.substr(0, size);
        }
    }
}

TEST(CutLog, LogThatStartsAnywhereGivesTheRecordsAfterItsStart) {
    for (const std::string_view whole : {kNewLog, kOldLog}) {
        for (std::size_t begin = 1; begin < whole.size(); ++begin) {
            const CollectedCalls log = ReadLog(whole.substr(begin));
            ASSERT_LE(log.stretches.size(), 1U) << whole.substr(begin);
            const bool isAtRecord =
                whole[begin - 1] == '\n' &&
                (whole[begin] == '\n' || whole[begin] == '1' || whole.substr(begin).starts_with("Command"));
            if (isAtRecord) {
                ASSERT_EQ(log.stretches.size(), whole == kOldLog && whole[begin] == '\n' ? 1U : 0U);
            }
        }
    }
}

TEST(DamagedLog, ForeignLinesUpToTheNextRecordAreOneStretch) {
    const CollectedCalls log = ReadLog(
        "hello\nworld\n\nagain\n\n10:15:30 01234-567:STRTLogout {Sesn=5 }\noops"
        "\n10:15:30 01234-567:FINILogout CKR_OK1clks {}\n10:15:30 01234-567:STRTLogout {Sesn=5");
    EXPECT_EQ(CallsOf(log), Strings{"C_Logout 6 8 CKR_OK"});
    ASSERT_EQ(log.stretches.size(), 3U);
    EXPECT_EQ(log.stretches[0].place.line, 1U);
    EXPECT_EQ(log.stretches[0].lines, 3U);
    EXPECT_EQ(log.stretches[1].place.line, 7U);
    EXPECT_EQ(log.stretches[1].lines, 1U);
    EXPECT_EQ(log.stretches[2].place.line, 9U);
    EXPECT_EQ(log.beginnings, (Strings{"hello", "oops", "10:15:30 01234-567:STRTLogout {Sesn=5"}));
}

TEST(DamagedLog, RecordWithAnyByteOfItsHeadChangedIsReadOrCountedAsUnreadable) {
    const std::string record = "10:15:30 01234-567:FINILogout ***CKR_PIN_INCORRECT***1clks {}\n";
    for (std::size_t i = 0; i + 1 < record.size(); ++i) {
        for (int bit = 0; bit < 8; ++bit) {
            std::string damaged = record;
            damaged[i] = static_cast<char>(damaged[i] ^ 1 << bit);
            const CollectedCalls log = ReadLog(damaged);
            ASSERT_EQ(log.calls.size() + log.stretches.size(), 1U) << damaged;
            for (const KeptCall& call : log.calls) EXPECT_EQ(call.Get().Function(), "C_Logout");
        }
    }
}

TEST(OldTextLog, RecordWithADateThatDoesNotExistIsUnreadable) {
    for (const std::string_view date :
         {"Sun Now 15 10:15:30 2026", "Som Nov 15 10:15:30 2026", "Sun Nov 32 10:15:30 2026",
          "Sun Nov 15 25:15:30 2026", "Sun Nov 15 10:15:30 26"}) {
        std::string record = "\nCommand(Logout, None, Start) PID:  1  Time:  ";
        record.append(date).append("\n\n{\n   SessionHandle(0x1);\n}");
        const CollectedCalls log = ReadLog(record);
        EXPECT_EQ(log.calls.size(), 0U) << date;
        EXPECT_EQ(log.stretches.size(), 1U) << date;
    }
}

TEST(TextLog, ChildrenDecideBetweenFunctionsThatPrintOneName) {
    const CollectedCalls log = ReadLog(
        "10:15:30 00001-001:STRTFindObjects {Sesn=5 10 }\n"
        "10:15:30 00001-001:FINIFindObjects CKR_OK1clks {ObjHndLst={Obj=3 } 1 }\n"
        "10:15:30 00001-001:STRTFindObjects {Sesn=5 }\n"
        "10:15:30 00001-001:FINIFindObjects CKR_OK1clks {}\n"
        "10:15:30 00001-001:FINIFindObjects CKR_OK1clks {}\n"
        "10:15:30 00001-001:STRTOpenSession {Slot=1 2 Flgs=4 5 }\n"
        "10:15:30 00001-001:FINIOpenSession ***CKR_SLOT_ID_INVALID***1clks {}\n"
        "10:15:30 00001-001:FINIOpenSession ***CKR_SLOT_ID_INVALID***1clks {}\n"
        "10:15:30 00001-001:STRTGetSessionInfo {}\n"
        "10:15:30 00001-001:FINIGetSessionInfo CKR_OK1clks {SesInfo=(1,2,0x3,0x4) }\n"
        "10:15:30 00001-001:STRTUnknownType {Sesn=5 }\n");
    EXPECT_EQ(
        CallsOf(log),
        (Strings{"C_FindObjects 1 2 CKR_OK", "C_FindObjectsFinal 3 4 CKR_OK", "C_FindObjectsFinal - 5 CKR_OK",
                 "CA_OpenSession 6 7 CKR_SLOT_ID_INVALID", "C_OpenSession - 8 CKR_SLOT_ID_INVALID",
                 "C_GetSessionInfo - 10 CKR_OK", "CA_GetSessionInfo 9 -", "UnknownType 11 -"}));
}

TEST(TextLog, ElementsOfListsAreNumbersAsInEvents) {
    const CollectedCalls log =
        ReadLog("10:15:30 00001-001:FINIGetSlotList CKR_OK1clks {SlotLst={Slot=4 Slot=7 } }\n");
    const std::vector<Value> out = log[0].Out();
    ASSERT_EQ(out.size(), 1U);
    EXPECT_EQ(out[0].kind, "SlotIDList");
    ASSERT_EQ(out[0].children.size(), 2U);
    EXPECT_EQ(out[0].children[1].kind, "");
    EXPECT_EQ(out[0].children[1].number, 7U);
}

TEST(TextLog, CallsAreJoinedByProcessThreadAndFunctionWithTheNewestStartFirst) {
    const CollectedCalls log = ReadLog(
        "10:15:30 00001-001:STRTLogout {Sesn=1 }\n"
        "10:15:30 00001-002:STRTLogout {Sesn=2 }\n"
        "10:15:30 00002-001:STRTLogout {Sesn=3 }\n"
        "10:15:30 00001-001:STRTFinalize {}\n"
        "10:15:30 00001-001:STRTLogout {Sesn=4 }\n"
        "10:15:30 00001-001:FINILogout CKR_OK1clks {}\n"
        "10:15:30 00001-002:FINILogout CKR_OK1clks {}\n"
        "10:15:30 00001-001:FINILogout CKR_OK1clks {}\n"
        "10:15:30 00001-001:FINIFinalize CKR_OK1clks {}\n");
    EXPECT_EQ(CallsOf(log), (Strings{"C_Logout 5 6 CKR_OK", "C_Logout 2 7 CKR_OK", "C_Logout 1 8 CKR_OK",
                                     "C_Finalize 4 9 CKR_OK", "C_Logout 3 -"}));
    EXPECT_EQ(log[0].fields.session, 4U);
}

TEST(TextLog, CallsOfTheOldFormatAreJoinedByProcessAndFunctionWithTheNewestStartFirst) {
    const auto record = [](const char* specifier, int process, int session) {
        const bool isStart = session != 0;
        std::string text = std::string("\nCommand(Logout, None, ") + specifier + ") PID:  ";
        text += std::to_string(process) + "  Time:  Sun Nov 15 10:15:30 2026\n";
        text += isStart ? "\n{\n   SessionHandle(0x" + std::to_string(session) + ");\n}"
                        : std::string(" // 1 clock cycles\n{\n}");
        return text;
    };
    const CollectedCalls log = ReadLog(record("Start", 1, 4) + record("Start", 2, 5) + record("Start", 1, 6) +
                                       record("End, CKR_OK", 1, 0) + record("End, CKR_CANCEL", 2, 0) +
                                       record("End, CKR_GENERAL_ERROR", 1, 0));
    ASSERT_EQ(log.calls.size(), 3U);
    const auto described = [&](std::size_t i) {
        return std::to_string(log[i].process) + ' ' + std::to_string(log[i].fields.session.value_or(0)) +
               ' ' + std::string(log[i].result);
    };
    EXPECT_EQ(described(0), "1 6 CKR_OK");
    EXPECT_EQ(described(1), "2 5 CKR_CANCEL");
    EXPECT_EQ(described(2), "1 4 CKR_GENERAL_ERROR");
}

// The length of this text is printed. Therefore the text may hold lines that look like records.
TEST(TextLog, TextWithALengthThatHoldsWholeRecordsIsReadAsAText) {
    const std::string fake = "x\") } \n\n10:15:30 00001-001:STRTLogout {Sesn=5 }\n\nCommand(Logout";
    const std::string length = std::to_string(fake.size());
    std::string text = "10:15:30 00001-001:STRTLogVerifyFile {Sesn=1 Ptr=0x1 (";
    text.append(length).append(",\"").append(fake).append("\") \"abc\" Ptr=0x2 }\n");
    text.append("10:15:30 00001-001:STRTFinalize {}\n");
    const CollectedCalls log = ReadLog(text);
    EXPECT_EQ(log.stretches.size(), 0U);
    EXPECT_EQ(CallsOf(log), (Strings{"CA_LogVerifyFile 1 -", "C_Finalize 6 -"}));
    EXPECT_EQ(log[0].In().at(2).bytes, fake);
}

TEST(TextLog, TimeOfDayThatStepsBackBeginsANewDay) {
    const CollectedCalls log = ReadLog(
        "23:59:59 00001-001:FINIFinalize CKR_OK1clks {}\n"
        "00:00:01 00001-001:FINIFinalize CKR_OK1clks {}\n"
        "23:59:59 00002-001:FINIFinalize CKR_OK1clks {}\n"
        "00:00:02 00001-001:FINIFinalize CKR_OK1clks {}\n"
        "18:00:00 00001-001:FINIFinalize CKR_OK1clks {}\n"
        "17:59:00 00001-001:FINIFinalize CKR_OK1clks {}\n"
        "05:58:59 00001-001:FINIFinalize CKR_OK1clks {}\n");
    std::vector<std::int64_t> days;
    for (const KeptCall& call : log.calls) days.push_back(Seconds(call.Get().end) / kSecondsPerDay);
    EXPECT_EQ(days, (std::vector<std::int64_t>{0, 1, 0, 1, 1, 1, 2}));
}

TEST(LongLine, ValueInAVeryLongLineIsKeptAsItsSizeAndBeginning) {
    constexpr std::size_t kSize = 20 << 20;
    const std::string hex = [] {
        std::string digits;
        for (std::size_t i = 0; i < kSize; ++i) digits += "8f";
        return digits;
    }();
    for (const std::size_t piece : {std::size_t{4096}, std::size_t{1 << 20}, hex.size()}) {
        std::string text = "10:15:30 00001-001:STRTSign {Sesn=1 \"";
        text.append(hex).append("\" }\n10:15:30 00001-001:FINISign CKR_OK1clks {\"ab\" }\n");
        CollectedCalls log;
        CallReader reader(log);
        for (std::size_t i = 0; i < text.size(); i += piece)
            reader.Feed(std::string_view(text).substr(i, piece));
        reader.Finish();
        ASSERT_EQ(log.calls.size(), 1U);
        EXPECT_EQ(log.stretches.size(), 0U);
        EXPECT_EQ(log[0].endPlace.line, 2U);
        EXPECT_LT(log[0].startText.size(), 4U << 20);
        const Value data = log[0].In().at(1);
        EXPECT_EQ(data.size, kSize);
        EXPECT_EQ(data.bytes, std::string(kLargestKeptValue, '\x8f'));
    }
}

TEST(LongLine, EventInAVeryLongLineIsStillAnEvent) {
    std::string line =
        R"({"event":"start","time":"2026-11-21T12:33:45Z","run":"a-1","pid":1,"tid":2,"call":1,"function":"C_Sign","in":[{"kind":"ByteString","size":9000000,"text":")";
    for (int i = 0; i < 3'000'000; ++i) line += "\\\"a";
    line += "\"}]}\n";
    const CollectedCalls log = ReadLog(line);
    ASSERT_EQ(log.calls.size(), 1U);
    const Value data = log[0].In().at(0);
    EXPECT_EQ(data.size, 9'000'000U);
    EXPECT_EQ(data.bytes->size(), kLargestKeptValue);
    EXPECT_EQ(data.bytes->substr(0, 4), "\"a\"a");
}

TEST(LongLine, LineWithoutAnEndIsOneStretchAndKeepsOnlyItsBeginning) {
    CollectedCalls log;
    CallReader reader(log);
    const std::string piece(1 << 20, 'x');
    for (int i = 0; i < 64; ++i) reader.Feed(piece);
    reader.Feed("\n10:15:30 00001-001:STRTFinalize {}\n");
    reader.Finish();
    EXPECT_EQ(CallsOf(log), Strings{"C_Finalize 2 -"});
    EXPECT_EQ(log.stretches.size(), 1U);
    EXPECT_EQ(log.beginnings.at(0), std::string(200, 'x'));
}

}  // namespace
}  // namespace ckscribe
