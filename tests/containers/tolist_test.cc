#include "generic/tolist"

#include "tests/support/test.h"

namespace {

using Link = TOLink<std::string>;
using Names = TOList<std::string>;

int Compare(Link const* link, std::string const* key) { return link->Contents().compare(*key); }

int CompareUntyped(Link const* link, void const* key) {
    return link->Contents().compare(static_cast<char const*>(key));
}

int Initial(Link const* link, std::string const* key) { return link->Contents()[0] - (*key)[0]; }

int SameInitial(Link const* link, void const* other) {
    return Initial(link, &static_cast<Link const*>(other)->Contents());
}

int BaseInitial(olink_t const* link, void const* other) {
    return SameInitial(static_cast<Link const*>(link), other);
}

Names Make(std::string const& words) {
    Names names;
    std::istringstream in(words);
    for (std::string word; in >> word;) names.Append(word);
    return names;
}

}  // namespace

TEST(TOListDeathTest, PopTakesTheFirstAndGetTheLast) {
    Names names = Make("a b c");
    names.Insert("0");
    EXPECT_EQ("0", names.Pop());
    EXPECT_EQ("c", names.Get());
    EXPECT_EQ("a b b", *names.First() + ' ' + *names.Last() + ' ' + *names[1]);
    EXPECT_EQ(nullptr, names[2]);
    names.Clear();
    EXPECT_TRUE(!names.First() && !names.Last());
    EXPECT_DEATH(names.Pop(), R"(include/generic/tolist:[0-9]+:.*p != 0)");
    EXPECT_DEATH(names.Get(), R"(include/generic/tolist:[0-9]+:.*p != 0)");
}

TEST(TOList, CopiesAreDeepAndMovesEmptyTheirSource) {
    Names names = Make("a b"), copy(names);
    *copy.First() = "x";
    EXPECT_EQ("a b", Joined(names));
    copy = static_cast<Names const&>(copy);
    names = std::move(copy);
    copy.Append("again");  // NOLINT(bugprone-use-after-move): a moved-from list is empty
    EXPECT_EQ("x b, again", Joined(names) + ", " + Joined(copy));
    names.Reverse(copy);
    EXPECT_EQ("b x", Joined(copy));
    copy.Reverse(copy);
    Names().Reverse(names);
    EXPECT_EQ("x b, ", Joined(copy) + ", " + Joined(names));
}

TEST(TOList, FindsAndAddsOrReplaces) {
    Names names = Make("b c");
    std::string const c = "c";
    EXPECT_EQ(names[1], names.Find(Compare, &c));
    EXPECT_EQ(names[0], names.Find(CompareUntyped, "b"));
    EXPECT_EQ(nullptr, names.Find(CompareUntyped, "z"));
    EXPECT_EQ(names[1], &names.FindOrInsert("c", Compare));
    EXPECT_EQ(names[1], &names.FindOrAppend("c", Compare));
    EXPECT_EQ("a d", names.FindOrInsert("a", Compare) + ' ' + names.FindOrAppend("d", Compare));
    EXPECT_EQ("a b c d", Joined(names));
    EXPECT_EQ("bb", names.ReplaceOrInsert("bb", Initial));
    EXPECT_EQ("cc", names.ReplaceOrAppend("cc", Initial));
    EXPECT_EQ("0 e",
              names.ReplaceOrInsert("0", Initial) + ' ' + names.ReplaceOrAppend("e", Initial));
    EXPECT_EQ("0 a bb cc d e", Joined(names));
}

TEST(TOList, RemovesByKeyAndByFunctorAndLoops) {
    Names names = Make("a b a c b a d");
    std::string const b = "b", z = "z";
    EXPECT_EQ(1, names.Remove(CompareUntyped, "a"));
    EXPECT_EQ(1, names.Remove(Compare, &b));
    EXPECT_EQ(0, names.Remove(Compare, &z) + names.Remove(CompareUntyped, "z"));
    EXPECT_EQ("a c b a d", Joined(names));
    std::string seen;
    auto const until_c = [](Link* link, void* out) {
        *static_cast<std::string*>(out) += link->Contents();
        return link->Contents() == "c" ? 7 : 0;
    };
    EXPECT_EQ(7, names.Loop(until_c, &seen));
    EXPECT_EQ("ac", seen);
    EXPECT_EQ(2, names.RemoveLoop(Compare, names.First()));  // a key in the list
    EXPECT_EQ(1, names.RemoveLoop(CompareUntyped, "c"));
    EXPECT_EQ("b d", Joined(names));
    struct : olist_cmpo_t {
        int operator()(olink_t const* link) const override {
            return static_cast<Link const*>(link)->Contents() == "b" ? 0 : 1;
        }
    } is_b;
    EXPECT_EQ(1, names.RemoveLoop(is_b));
    EXPECT_EQ("d", Joined(names));
}

TEST(TOList, SortIsStableAndUniqComparesWithThePredecessorAsItStood) {
    std::mt19937 random(3);
    auto const by_initial = [](auto const& a, auto const& b) { return a[0] < b[0]; };
    auto const equal = [](auto const& a, auto const& b) { return a[0] == b[0]; };
    for (int round = 0; round < 300; ++round) {
        Names names;
        std::vector<std::string> model;
        for (int i = static_cast<int>(random() % 40); i > 0; --i) {
            model.push_back("abcde"[random() % 5] + std::to_string(i));
            names.Append(model.back());
        }
        std::stable_sort(model.begin(), model.end(), by_initial);
        round % 2 ? names.olist_t::Sort(BaseInitial) : names.Sort(SameInitial);
        EXPECT_TRUE(std::equal(model.begin(), model.end(), names.begin(), names.end()));
        model.erase(std::unique(model.begin(), model.end(), equal), model.end());
        names.Uniq(SameInitial);
        ASSERT_TRUE(std::equal(model.begin(), model.end(), names.begin(), names.end())) << round;
    }
    Names chain = Make("1 2 3 5 6");  // 3 goes because of 2, which goes too
    chain.Uniq([](Link const* link, void const* before) { return SameInitial(link, before) - 1; });
    EXPECT_EQ("1 5", Joined(chain));
}

TEST(TOListIterator, WalksToTheLastLinkOfTheBinding) {
    Names names = Make("a b");
    TOListIterator<std::string> it(names);
    names.Append("late");
    EXPECT_EQ("a", *it.Succ());
    EXPECT_EQ("a", *it());
    EXPECT_EQ("b", *it + it->substr(1));
    EXPECT_TRUE(it++);
    EXPECT_TRUE(!it && !it() && !(++it).Succ());
    it.Reset();
    EXPECT_EQ("late", *++ ++it);
    Names const empty;
    it.Bind(empty);
    EXPECT_EQ(nullptr, it());
}
