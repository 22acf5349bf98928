#include "tool/result_explanations.h"

#include <gtest/gtest.h>

#include "functions/pkcs11_names.h"

namespace {

using ckscribe::ExplanationOf;

TEST(ResultExplanations, EveryNameOfAResult_IsExplained) {
    for (const auto& row : CKR_LookupTable) {
        EXPECT_NE(ExplanationOf(row.name), nullptr)
            << "Add " << row.name << " to kExplanations in tool/result_explanations.cpp.";
    }
    for (const char* name : {"CKR_UNKNOWN", "CKR_PARTITION_DISABLED"}) {
        EXPECT_NE(ExplanationOf(name), nullptr) << name;
    }
}

TEST(ResultExplanations, EveryExplanation_IsTwoSentences) {
    for (const auto& row : CKR_LookupTable) {
        const auto* const explanation = ExplanationOf(row.name);
        ASSERT_NE(explanation, nullptr) << row.name;
        EXPECT_EQ(explanation->name, row.name);
        for (const std::string_view sentence : {explanation->meaning, explanation->cause}) {
            ASSERT_GT(sentence.size(), 10U) << row.name;
            EXPECT_TRUE(sentence.front() >= 'A' && sentence.front() <= 'Z') << sentence;
            EXPECT_EQ(sentence.back(), '.') << sentence;
            EXPECT_EQ(sentence.find("  "), sentence.npos) << sentence;
        }
        EXPECT_NE(explanation->meaning, explanation->cause) << row.name;
    }
}

TEST(ResultExplanations, WrongPin_IsExplainedByItsMeaningAndItsCause) {
    const auto* const explanation = ExplanationOf("CKR_PIN_INCORRECT");
    ASSERT_NE(explanation, nullptr);
    EXPECT_EQ(explanation->meaning, "The PIN is wrong.");
    EXPECT_EQ(
        explanation->cause,
        "Look who logs in (user type and token): a PIN of another token, a changed PIN, or a line end that "
        "belongs to a file are usual; the token locks after a few tries.");
}

TEST(ResultExplanations, NameThatDoesNotExist_HasNoExplanation) {
    EXPECT_EQ(ExplanationOf("CKR_NO_SUCH_RESULT"), nullptr);
    EXPECT_EQ(ExplanationOf(""), nullptr);
}

}  // namespace
