#include <string>

#include "tests/config/configuration_test.h"

namespace {

using Store = WendrafilConfiguration;

std::string Zeros(size_t count) { return std::string(count, '0'); }

class PedSettingsTest : public ConfigurationTest {
protected:
    void WriteId(const std::string& list) {
        Write(OneEntry("Decoy", "PEDId", "9") + OneEntry("Orma", "PEDId", list));
    }

    // Returns the default identifier, or -1 for a failure.
    int Default(const std::string& list) {
        WriteId(list);
        unsigned id = 4711;
        if (store.PEDId(&id) != 0) {
            EXPECT_EQ(4711U, id);
            EXPECT_EQ(0U, store.PEDId());
            return -1;
        }
        EXPECT_EQ(id, store.PEDId());
        return static_cast<int>(id);
    }

    // Returns the identifier of a slot, or -1 for a failure.
    int OfSlot(unsigned slot, const std::string& list) {
        WriteId(list);
        unsigned short id = 4711;
        const int result = store.PEDIdForSlot(slot, &id);
        EXPECT_EQ(result != 0, result == 1);
        return result == 0 ? id : -1;
    }
};

TEST_F(PedSettingsTest, PEDTimeout_StoresTheFourNumbers) {
    unsigned long t[] = {11, 12, 13, 14};
    Write(
        "Decoy = {\n PEDTimeout1 = 9;\n}\nOrma = {\n PEDTimeout1 = 1;\n PEDTimeout2 = 22;\n PEDTimeout3 = "
        "333;\n"
        " PEDTimeout4 = 4444;\n}\n");
    EXPECT_EQ(0, store.PEDTimeout(&t[0], &t[1], &t[2], &t[3]));
    EXPECT_EQ(1UL, t[0]);
    EXPECT_EQ(22UL, t[1]);
    EXPECT_EQ(333UL, t[2]);
    EXPECT_EQ(4444UL, t[3]);

    Write("Orma = {\n PEDTimeout2 = 5x;\n PEDTimeout4 = -1;\n}\n");
    EXPECT_EQ(0, store.PEDTimeout(&t[0], &t[1], &t[2], &t[3]));
    EXPECT_EQ(0UL, t[0]);
    EXPECT_EQ(5UL, t[1]);
    EXPECT_EQ(0UL, t[2]);
    EXPECT_EQ(~0UL, t[3]);
}

TEST_F(PedSettingsTest, PEDTimeout_Reads199CharactersOfEachNumber) {
    unsigned long t[4];
    Write("Orma = {\n PEDTimeout1 = " + Zeros(198) + "7;\n PEDTimeout2 = " + Zeros(198) +
          "12;\n PEDTimeout3 = " + Zeros(198) + "345;\n PEDTimeout4 = " + Zeros(199) + "6;\n}\n");
    EXPECT_EQ(0, store.PEDTimeout(&t[0], &t[1], &t[2], &t[3]));
    EXPECT_EQ(7UL, t[0]);
    EXPECT_EQ(1UL, t[1]);
    EXPECT_EQ(3UL, t[2]);
    EXPECT_EQ(0UL, t[3]);
}

TEST_F(PedSettingsTest, PEDTimeoutIsGivenANullPointer_ReadingFailsAndStoresNothing) {
    Write(OneEntry("Orma", "PEDTimeout1", "5"));
    unsigned long t = 4711;
    EXPECT_EQ(1, store.PEDTimeout(nullptr, &t, &t, &t));
    EXPECT_EQ(1, store.PEDTimeout(&t, nullptr, &t, &t));
    EXPECT_EQ(1, store.PEDTimeout(&t, &t, nullptr, &t));
    EXPECT_EQ(1, store.PEDTimeout(&t, &t, &t, nullptr));
    EXPECT_EQ(4711UL, t);
}

TEST_F(PedSettingsTest, HSMSlot_IsTheNumberOrZero) {
    unsigned slot = 4711;
    EXPECT_EQ(1, store.HSMSlot(nullptr));
    Write(OneEntry("Decoy", "HSMSlot", "3"));
    EXPECT_EQ(1, store.HSMSlot(&slot));
    EXPECT_EQ(0U, slot);
    Write(OneEntry("RemotePed", "HSMSlot", "3"));
    EXPECT_EQ(0, store.HSMSlot(&slot));
    EXPECT_EQ(3U, slot);
}

TEST_F(PedSettingsTest, PEDId_IsTheDefaultIdentifier) {
    EXPECT_EQ(5, Default("5"));
    EXPECT_EQ(5, Default("5, 1:7, 2:9"));
    EXPECT_EQ(5, Default("1:7, 5"));
    EXPECT_EQ(5, Default("1:7,2:9,\t5 "));
    EXPECT_EQ(5, Default("::, 5")) << "items of slots are not looked at";
    EXPECT_EQ(5, Default("5, 6")) << "nor is anything after the default";
    EXPECT_EQ(0, Default("70000")) << "too high, but found";
    EXPECT_EQ(65534, Default("65534"));
    EXPECT_EQ(0, Default("65535"));
    EXPECT_EQ(65531, Default("-5"));
    EXPECT_EQ(0, Default("+"));
    EXPECT_EQ(12345, Default("12345"));
    EXPECT_EQ(1234, Default("+1234"));
    for (const char* list : {"", " ", ",5", "012345", "+12345", "5x", "x", "0x5", "1:7", "5 6", "1:7,,5"}) {
        EXPECT_EQ(-1, Default(list)) << list;
    }
}

TEST_F(PedSettingsTest, PEDIdHasNoPlaceOrKey_ReadingFails) {
    WriteId("5");
    EXPECT_EQ(1, store.PEDId(nullptr));
    Write(OneEntry("Orma", "Unknown", "5"));
    unsigned id = 4711;
    EXPECT_EQ(1, store.PEDId(&id));
    EXPECT_EQ(4711U, id);
    EXPECT_EQ(0U, store.PEDId());
    unsigned short slotsId = 4711;
    EXPECT_EQ(1, store.PEDIdForSlot(1, &slotsId));
    EXPECT_EQ(4711, slotsId);
}

TEST_F(PedSettingsTest, PEDId_Reads199Characters) {
    const std::string slots = "1:7," + std::string(192, ' ');
    EXPECT_EQ(123, Default(slots + "123"));
    EXPECT_EQ(123, Default(slots + "1234"));
    EXPECT_EQ(123, Default(slots + "12345"));
}

TEST_F(PedSettingsTest, PEDIdForSlot_IsTheSlotsOrTheDefault) {
    EXPECT_EQ(7, OfSlot(1, "5, 1:7, 2:9"));
    EXPECT_EQ(9, OfSlot(2, "5, 1:7, 2:9"));
    EXPECT_EQ(5, OfSlot(3, "5, 1:7, 2:9"));
    EXPECT_EQ(7, OfSlot(1, "1:7, 5"));
    EXPECT_EQ(7, OfSlot(1, "\t1 \t: 7 ,x"));
    EXPECT_EQ(7, OfSlot(1, "1:7, 1:8")) << "the first one counts";
    EXPECT_EQ(7, OfSlot(1, "1:7, 2:x")) << "nothing after it is looked at";
    EXPECT_EQ(7, OfSlot(999999999, "999999999:7"));
    EXPECT_EQ(7, OfSlot(1, "+00000001:+0007"));
    EXPECT_EQ(7, OfSlot(0, "-:7")) << "a lone sign is 0";
    EXPECT_EQ(7, OfSlot(4294967295U, "-1:7"));
    EXPECT_EQ(65534, OfSlot(1, "1:65534"));
    EXPECT_EQ(65531, OfSlot(1, "1:-5"));
}

TEST(ParsePedIdString, ItemOfASlotIsMalformed_ParsingFails) {
    for (const char* item : {":7", "1:", " :7", "1: ", "x:7", "1:x", "1:7:8", "0000000001:7", "1:000007",
                             "1:65535", "1x:7", "1:0x7", ":"}) {
        std::string text = std::string(item) + ", 1:7";
        unsigned short id = 4711;
        EXPECT_EQ(0, Store::ParsePedIdString(text.data(), 1, &id, nullptr)) << item;
        EXPECT_EQ(0, id);
    }
}

TEST_F(PedSettingsTest, PEDIdForSlot_DefaultComesFromTheTextThatTheFirstSearchCut) {
    EXPECT_EQ(1, OfSlot(2, "1:7, 5")) << "all that is left is the first item, up to its colon";
    EXPECT_EQ(1, OfSlot(1, "1:x, 5")) << "after a malformed item, too";
    EXPECT_EQ(1, OfSlot(1, "1:, 5")) << "also when the colon is its last character";
    EXPECT_EQ(5, OfSlot(2, "5:"));
    EXPECT_EQ(-1, OfSlot(1, ":5")) << "nothing is left before a colon that comes first";
    EXPECT_EQ(5, OfSlot(2, "5, x:y"));
    EXPECT_EQ(-1, OfSlot(2, ", 5"));
    EXPECT_EQ(0, OfSlot(2, "70000"));
    EXPECT_EQ(-1, OfSlot(2, "123456:7, 5")) << "a slot of six digits is no identifier";
}

TEST_F(PedSettingsTest, PEDIdForSlot_Reads2047Characters) {
    const std::string list = "5," + std::string(2040, ' ') + "1:";
    EXPECT_EQ(234, OfSlot(1, list + "234"));
    EXPECT_EQ(234, OfSlot(1, list + "2345"));
    EXPECT_EQ(234, OfSlot(1, list + "23456"));
}

TEST(ParsePedIdString, AllPointersAreNull_ParsingFails) {
    char text[] = "5, 1:7";
    EXPECT_EQ(0, Store::ParsePedIdString(text, 1, nullptr, nullptr));
    EXPECT_STREQ("5, 1:7", text);
}

struct ParseCase {
    std::string text;
    int result;
    int slotId;  // of slot 1
    int defaultId;
};

TEST(ParsePedIdString, ListOfIdentifiers_SlotsAndDefaultAreFound) {
    const ParseCase cases[] = {
        {"5, 1:7", 1, 7, 5},
        {"1:7, 5", 1, 7, 5},
        {"2:9, 5, 3:4, 1:7, junk", 1, 7, 5},
        {"1:7", 0, 7, 0},
        {"5", 0, 0, 5},
        {"5, 2:9", 0, 0, 5},
        {"5, 6, 1:7", 0, 0, 5},
        {"70000, 1:7", 1, 0, 0},
        {"1:7, 70000", 1, 7, 0},
        {"1:7, 1:8, 5", 1, 8, 5},
        {"1:7, x", 0, 7, 0},
        {"1:7, 2:x, 5", 0, 7, 0},
        {"", 0, 0, 0},
        {"5,,1:7", 0, 0, 5},
    };
    for (const ParseCase& c : cases) {
        std::string text = c.text;
        unsigned short slotId = 4711;
        unsigned short defaultId = 4712;
        EXPECT_EQ(c.result, Store::ParsePedIdString(text.data(), 1, &slotId, &defaultId)) << c.text;
        EXPECT_EQ(c.slotId, slotId) << c.text;
        EXPECT_EQ(c.defaultId, defaultId) << c.text;
    }
}

TEST(ParsePedIdString, ListOfIdentifiers_IsSplitAsFarAsItIsRead) {
    std::string text = "1:7,2:9,5";
    unsigned short id = 0;
    EXPECT_EQ(1, Store::ParsePedIdString(text.data(), 2, &id, nullptr));
    EXPECT_EQ(9, id);
    EXPECT_EQ(std::string("1\0007\0002\0009\0005", 9), text);

    text = "1:7,2:9,5,6";
    EXPECT_EQ(1, Store::ParsePedIdString(text.data(), 1, &id, nullptr));
    EXPECT_EQ(std::string("1\0007\0002:9,5,6", 11), text);

    text = "1:7,5,6";
    EXPECT_EQ(1, Store::ParsePedIdString(text.data(), 0, nullptr, &id));
    EXPECT_EQ(5, id);
    EXPECT_EQ(std::string("1:7\0005\0006", 7), text);
}

}  // namespace
