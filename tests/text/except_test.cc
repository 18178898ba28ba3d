#include "text/except.h"

#include "tests/support/test.h"

namespace {

TEST(Except, LeavesOutOfItsTextWhatIsNotGiven) {
    struct Row {
        Except e;
        char const* want;
    };
    for (Row const& row :
         {Row{Except(), "unknown"}, Row{Except("x"), "x"},
          Row{Except("socket", "refused", "sock", 42), "socket, refused, thrown in sock:42"},
          Row{Except("x", String_t("")), "x"}, Row{Except("x", "f", -1), "x"},
          Row{Except("x", "f", 0), "x, thrown in f:0"}, Row{Except("x", "", 3), "x"},
          Row{Except("", "m"), ", m"}, Row{Except(""), nullptr},
          Row{Except(nullptr, "m"), nullptr}})
        EXPECT_STREQ(row.want, row.e.ToString());
    Except const x("x");
    EXPECT_TRUE(x.Message().IsNull() && x.File().IsNull() && x.Line() == -1);
}

TEST(Except, CopiesKeepTheirTexts) {
    Except const a("k", "m", "f", 7);
    Except b, c(a);
    b = a;
    b = *&b;
    EXPECT_THROW(throw b, Except);
    Except const moved(std::move(b));
    EXPECT_EQ("k, m, thrown in f:7, k, m, thrown in f:7", c.ToString() + ", " + moved.ToString());
}

}  // namespace
