#include "text/except.h"

#include "tests/support/test.h"

namespace {

TEST(Except, LeavesOutOfItsTextWhatIsNotGiven) {
    String_t const texts[] = {Except().ToString(),
                              Except("socket", "refused", "sock", 42).ToString(),
                              Except("x", String_t("")).ToString(),
                              Except("x", "f", -1).ToString(),
                              Except("x", "f", 0).ToString(),
                              Except("x", "", 3).ToString(),
                              Except("", "m").ToString()};
    EXPECT_EQ("unknown socket, refused, thrown in sock:42 x x x, thrown in f:0 x , m",
              Joined(texts));
    EXPECT_TRUE(Except("").ToString().IsNull() && Except(nullptr, "m").ToString().IsNull());
    Except const x("x");
    EXPECT_TRUE(x.Message().IsNull() && x.File().IsNull() && x.Line() == -1);
}

TEST(Except, CopiesKeepTheirTexts) {
    Except const a("k", "m", "f", 7);
    Except b;
    b = a;
    b = *&b;
    Except const moved(std::move(b));
    EXPECT_STREQ("k, m, thrown in f:7", moved.ToString());
}

}  // namespace
