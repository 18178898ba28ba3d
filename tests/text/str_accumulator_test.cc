#include "text/str_accumulator.h"

#include "tests/support/test.h"

namespace {

// Pieces, null texts and the accumulated text's own ends against a string, and the steps of growth.
TEST(StrAccumulator, AgreesWithAStringAndGrowsInStepsOf128) {
    std::mt19937 random(3);
    for (int round = 0; round < 100; ++round) {
        str_arr_t acc;
        str_arr_init(&acc);
        EXPECT_EQ(nullptr, str_arr_str(&acc));
        std::string model;
        unsigned capacity = 128;  // the first use allocates, whatever the text
        for (int i = 0; i < 60; ++i) {
            std::string const piece(random() % 150, static_cast<char>('a' + i % 26));
            char const* texts[] = {piece.c_str(), nullptr, piece.c_str()};
            if (acc.buffer) texts[2] = acc.buffer + random() % (model.size() + 1);
            char const* const text = texts[random() % 3];
            bool const replaces = random() % 8 == 0;
            model = (replaces ? "" : model) + (text ? std::string(text) : "");
            ASSERT_EQ(model, (replaces ? str_arr_cpy : str_arr_cat)(&acc, text));
            while (capacity <= model.size()) capacity += 128;
            ASSERT_EQ(static_cast<int>(capacity), acc.capacity);
            ASSERT_EQ(acc.buffer + model.size(), acc.end);
            ASSERT_EQ(acc.buffer, str_arr_str(&acc));
        }
        str_arr_delete(&acc);
    }
}

}  // namespace
