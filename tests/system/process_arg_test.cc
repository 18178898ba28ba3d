#include "system/process_arg.h"

#include "tests/support/test.h"

TEST(ProcessArg, BecomesText) {
    TOList<String_t> none, three;
    for (char const* text : {"a", "b", "c"}) three.Append(text);
    String_t const shared("shared");
    ProcessArg const args[] = {ProcessArg(), 'c',         '\0',        "text",
                               none,         three,       {255, 0},    {-1, 0},
                               {255, 2},     {-1, 2},     {255, 1},    {-1, 16},
                               {1.5, 3, 2},  {1.5, 4, 2}, {1.5, 0, 2}, {1e9, 2, 3}};
    std::string got;
    for (auto const& arg : args) got += arg.Str().Get() + std::string("|");
    EXPECT_EQ("|c||text||a, b, c|377|37777777777|ff|ffffffff|255|-1|1.50|1.50e+00|1.5|1e+09|", got);
    EXPECT_TRUE(ProcessArg(static_cast<char const*>(nullptr)).Str().IsNull());
    EXPECT_EQ(shared.Get(), ProcessArg(shared).Str().Get());
}
