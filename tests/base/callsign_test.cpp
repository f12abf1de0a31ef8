#include "base/callsign.h"

#include <string>

#include <gtest/gtest.h>

namespace {

TEST(CallsignTest, TellsCallsFromOtherWords) {
  for (const char* call : {"K1ABC", "W9XYZ", "9A1A", "3DA0RU", "HF0XYZ", "2E0ABC", "K1ABC/P", "PJ4/K1ABC",
                           "K1ABC/QRP/1", "VP2E/K1A", "Q1A", "A12BC", "ABCDEF1ABCDEF"})
    EXPECT_TRUE(base::is_callsign(call)) << call;
  for (const char* word : {"", "K1", "CQ", "599", "RR73", "73", "123AB", "K1ABCDEFG", "ABCDEFG1A", "k1abc", "K1ABC/",
                           "/K1ABC", "K1ABC//P", "K1-ABC", "K1ABC ", "P/4", "<K1ABC>"})
    EXPECT_FALSE(base::is_callsign(word)) << word;
}

TEST(CallsignTest, IsAtMost32Long) {
  const std::string longest = "K1ABC/" + std::string(26, 'P');
  EXPECT_TRUE(base::is_callsign(longest));
  EXPECT_FALSE(base::is_callsign(longest + 'P'));
}

}  // namespace
