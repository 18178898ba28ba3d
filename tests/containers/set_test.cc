#include "containers/set.h"

#include <bitset>

#include "tests/support/test.h"

namespace {

TEST(Set, IsMadeFromListsAndTexts) {
    int list[] = {40, 3, -1, 3};
    EXPECT_EQ("3 40, 3 5, 0 9, 2", Joined(Set(4, list)) + ", " + Joined(Set(5, 3, 0)) + ", " +
                                       Joined(Set(0, 9, -2, 4)) + ", " + Joined(Set(-1, 2, 0)));
    EXPECT_EQ(3U, Set("0,1,40").get(list));
    EXPECT_EQ("0 1 -1 3", Joined(list));  // only members below the number of words
    Set s(95);
    EXPECT_EQ(2U, s.num_words());  // a rest of the division does not count
    testing::internal::CaptureStderr();
    s.add("1;2");
    EXPECT_EQ("Set::add(const char*): syntax error near \";\"\n",
              testing::internal::GetCapturedStderr());
    for (auto const& [text, want] : Rows<char const*, char const*>{
             {" 1\t,3 ,5 -\t7", "1 3 5 6 7"}, {"7-5", ""}, {"1 2", "2"}, {"3-,,5", "5"}})
        EXPECT_EQ(want, Joined(Set(text))) << text;
}

TEST(Set, FollowsAModel) {
    using Model = std::bitset<256>;
    std::mt19937 random(31);
    Set sets[3] = {Set(0), Set(64), Set(0)};
    Model models[3];
    for (int step = 0; step < 4000; ++step) {
        auto const target = random() % 3, source = random() % 3;
        auto const i = static_cast<unsigned>(random() % (step % 10 == 0 ? 200 : 60));
        int list[] = {-1, static_cast<int>(i)};
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
            case 8: s.remove(2, list), model.reset(i); break;
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
        ASSERT_EQ(model == models[source] && s.num_words() == other.num_words(), s == other);
        // Of the words that only `s` has the first one is looked at.
        Model const seen = ~Model() >> (model.size() - 32 * (other.num_words() + 1));
        ASSERT_EQ((model & ~models[source] & seen).none(), s <= other) << step;
    }
}

TEST(SetDeathTest, FixedSetsStayInTheCallersWords) {
    set_word_t words[] = {99, 99, 0xABCD};
    Set s(2, words);
    for (unsigned const i : {63, 64}) s.add(i);
    s |= Set("1,64-90");
    EXPECT_EQ("2 2147483648 43981", Joined(words));
    Set copy(s);
    copy.add(64);
    EXPECT_EQ("1 63 64", Joined(copy));
    EXPECT_DEATH(s = Set(96), R"(containers/set\.cc:[0-9]+:.*num == s\.num)");
}

}  // namespace
