#include "text/str_accumulator.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

class StrAccumulator : public testing::Test {
protected:
    StrAccumulator() { str_arr_init(&acc); }
    ~StrAccumulator() override { str_arr_delete(&acc); }
    str_arr_t acc;
};

TEST_F(StrAccumulator, GrowsInStepsOf128WhenTheTerminatorNoLongerFits) {
    EXPECT_EQ(nullptr, str_arr_str(&acc));
    EXPECT_STREQ("", str_arr_cat(&acc, nullptr));  // the first use allocates in any case
    EXPECT_EQ(128, acc.capacity);
    str_arr_cat(&acc, std::string(127, 'x').c_str());
    EXPECT_EQ(128, acc.capacity);
    str_arr_cat(&acc, "y");
    EXPECT_EQ(256, acc.capacity);
    EXPECT_EQ(acc.buffer + 128, acc.end);
    str_arr_cpy(&acc, std::string(600, 'z').c_str());
    EXPECT_EQ(640, acc.capacity);
    EXPECT_STREQ("", str_arr_cpy(&acc, nullptr));
    EXPECT_EQ(640, acc.capacity);
}

TEST_F(StrAccumulator, TakesItsOwnTextAndAgreesWithAString) {
    std::mt19937 random(3);
    std::string model;
    for (int i = 0; i < 2000; ++i) {
        std::string const piece(random() % 90, static_cast<char>('a' + i % 26));
        unsigned const from = static_cast<unsigned>(random() % (model.size() + 1));
        switch (model.size() > 5000 ? 3 : random() % 4) {
            case 0:
                str_arr_cat(&acc, piece.c_str());
                model += piece;
                break;
            case 1:
            case 2:
                str_arr_cat(&acc, acc.buffer ? acc.buffer + from : nullptr);
                model += model.substr(from);
                break;
            default:
                if (random() % 8 && model.size() <= 5000) break;
                str_arr_cpy(&acc, acc.buffer ? acc.buffer + from : nullptr);
                model = model.substr(from);
        }
        if (!acc.buffer) continue;
        ASSERT_EQ(model, str_arr_str(&acc));
        ASSERT_EQ(acc.buffer + model.size(), acc.end);
    }
}

}  // namespace
