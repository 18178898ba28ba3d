#include "containers/set.h"

#include <bitset>

#include "tests/support/test.h"

namespace {

TEST(Set, IsMadeFromLists) {
    int list[] = {40, 3, -1, 3};
    EXPECT_EQ("3 40, 3 5", Joined(Set(4, list)) + ", " + Joined(Set(5, 3, 0)));
    EXPECT_EQ("0 9, 2", Joined(Set(0, 9, -2, 4)) + ", " + Joined(Set(-1, 2, 0)));

    Set s(95);
    EXPECT_EQ(2U, s.num_words());  // a rest of the division does not count
    s.remove(200);
    EXPECT_EQ(7U, s.num_words());

    std::vector<int> out(3, -7);
    EXPECT_EQ(3U, Set("0,1,40").get(out.data()));
    EXPECT_EQ("0 1 -7", Joined(out));  // only members below the number of words
}

TEST(Set, AddsMemberLists) {
    Rows<char const*, std::string> const rows = {{"1,3,5-7", "1 3 5 6 7 "},
                                                 {" 1\t- 3 ,\t12", "1 2 3 12 "},
                                                 {"7-5", ""},
                                                 {"1 2", "2 "},
                                                 {"1-2 3-4", "1 2 3 4 "},
                                                 {"3-,,5", "5 "},
                                                 {"18446744073709551617-1", ""}};
    for (auto const& [text, want] : rows) {
        Set s(99, 0);
        s.add(text);
        EXPECT_EQ(want + "99", Joined(s)) << text;
    }
    Set complemented(3, 40, 0);
    complemented.add("-3,5");
    EXPECT_EQ(61U, complemented.size());
    complemented.add("-");
    for (auto const& [text, token] :
         Rows<std::string, std::string>{{"1;2", ";"}, {"3--5", "-"}, {"x", "x"}}) {
        testing::internal::CaptureStderr();
        complemented.add(text.c_str());
        EXPECT_EQ("Set::add(const char*): syntax error near \"" + token + "\"\n",
                  testing::internal::GetCapturedStderr());
    }
    EXPECT_EQ("3 5 40", Joined(complemented));
}

TEST(Set, FollowsAModel) {
    using Model = std::bitset<224>;
    std::mt19937 random(31);
    Set sets[3] = {Set(0), Set(64), Set(0)};
    Model models[3];
    for (int step = 0; step < 4000; ++step) {
        auto const target = random() % 3, source = random() % 3;
        auto const i = static_cast<unsigned>(random() % (step % 10 == 0 ? 200 : 60));
        Set& s = sets[target];
        Set const& other = sets[source];
        Model& model = models[target];
        Model const model_other = models[source];
        switch (random() % 18) {
            case 0: s |= other, model |= model_other; break;
            case 1: s &= other, model &= model_other; break;
            case 2: s -= other, model &= ~model_other; break;
            case 3: s ^= other, model ^= model_other; break;
            case 4: s = other, model = model_other; break;
            case 5: ~s, model = ~model & ~Model() >> (model.size() - 32 * s.num_words()); break;
            case 6: s.clear(), model.reset(); break;
            case 7: s = Set(64), model.reset(); break;
            case 8: s.remove(i), model.reset(i); break;
            default: s.add(i), model.set(i);
        }
        std::vector<unsigned> members;
        for (unsigned m = 0; m < model.size(); ++m)
            if (model[m]) members.push_back(m);
        ASSERT_EQ(members, std::vector<unsigned>(s.begin(), s.end())) << step;
        Setiterator each(s);
        for (unsigned const m : members) ASSERT_EQ(m, static_cast<unsigned>(each()));
        ASSERT_TRUE(each() == -1 && each() == -1);
        ASSERT_EQ(members.size(), s.size()) << step;
        ASSERT_EQ(members.empty() ? 0 : members.back() + 1, s.max()) << step;
        ASSERT_EQ(model[i], s.contains(i)) << step;
        ASSERT_EQ((model & models[source]).any(), s && other) << step;
        bool const within = (model & ~models[source]).none();
        ASSERT_TRUE(within == (s <= other) || s.num_words() > other.num_words() + 1) << step;
    }
}

TEST(Set, ComparesWordsRatherThanMembers) {
    Set narrow(1, 0), wide(1, 0);
    wide.bumpsize(95);
    EXPECT_FALSE(narrow == wide);
    wide.add(64);
    EXPECT_TRUE(wide <= narrow);  // only the first extra word counts
}

TEST(SetDeathTest, FixedSetsStayInTheCallersWords) {
    set_word_t words[] = {99, 99, 0xABCD}, more[2];
    Set s(2, words);
    for (unsigned const i : {63, 64}) s.add(i);
    s |= Set("1,64-90");
    EXPECT_EQ("2 2147483648 43981", Joined(words));

    Set same(2, more, s), copy(s), moved(std::move(same));
    for (Set* const grown : {&copy, &moved}) {
        grown->add(64);
        EXPECT_EQ("1 63 64", Joined(*grown));
    }
    s = Set(64);
    EXPECT_EQ(0U, words[0] | words[1]);
    EXPECT_DEATH(Set(2, words, Set(32)), R"(containers/set\.cc:[0-9]+:.*n == s\.num)");
    EXPECT_DEATH(Set(2, words) = Set(96), R"(containers/set\.cc:[0-9]+:.*num == s\.num)");
}

}  // namespace
