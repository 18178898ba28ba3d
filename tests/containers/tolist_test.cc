#include <gtest/gtest.h>

#include <algorithm>
#include <generic/tolist>
#include <random>
#include <string>
#include <vector>

namespace {

using Link = TOLink<std::string>;
using Names = TOList<std::string>;

int compare(Link const* link, std::string const* key) { return link->Contents().compare(*key); }

int compare_untyped(Link const* link, void const* key) {
    return link->Contents().compare(static_cast<char const*>(key));
}

int initial(Link const* link, std::string const* key) { return link->Contents()[0] - (*key)[0]; }

int same_initial(Link const* link, void const* other) {
    return initial(link, &static_cast<Link const*>(other)->Contents());
}

int base_initial(olink_t const* link, void const* other) {
    return same_initial(static_cast<Link const*>(link), other);
}

Names make(std::initializer_list<char const*> values) {
    Names names;
    for (char const* const value : values) names.Append(value);
    return names;
}

std::string text(Names const& names) {
    std::string joined;
    for (std::string const& name : names) joined += name + ' ';
    return joined;
}

}  // namespace

TEST(TOList, PopTakesTheFirstAndGetTheLast) {
    Names names = make({"a", "b", "c"});
    names.Insert("0");
    EXPECT_EQ("0", names.Pop());
    EXPECT_EQ("c", names.Get());
    EXPECT_EQ("a", *names.First());
    EXPECT_EQ("b", *names.Last());
    EXPECT_EQ("b", *names[1]);
    EXPECT_EQ(nullptr, names[2]);
    names.Clear();
    EXPECT_EQ(nullptr, names.First());
    EXPECT_EQ(nullptr, names.Last());
}

TEST(TOListDeathTest, TakingFromAnEmptyListAborts) {
    Names names;
    EXPECT_DEATH(names.Pop(), R"(include/generic/tolist:[0-9]+:.*p != 0)");
    EXPECT_DEATH(names.Get(), R"(include/generic/tolist:[0-9]+:.*p != 0)");
}

TEST(TOList, CopiesAreDeepAndMovesEmptyTheirSource) {
    Names names = make({"a", "b"});
    Names copy(names);
    *copy.First() = "x";
    EXPECT_EQ("a b ", text(names));
    copy = static_cast<Names const&>(copy);
    names = std::move(copy);
    EXPECT_EQ("x b ", text(names));
    copy.Append("again");  // NOLINT(bugprone-use-after-move): a moved-from list is empty
    EXPECT_EQ("again ", text(copy));
    names.Reverse(copy);
    EXPECT_EQ("b x ", text(copy));
    copy.Reverse(copy);
    EXPECT_EQ("x b ", text(copy));
    Names().Reverse(copy);
    EXPECT_EQ("x b ", text(names) + text(copy));
}

TEST(TOList, FindsAndAddsOrReplaces) {
    Names names = make({"b", "c"});
    std::string const c = "c";
    EXPECT_EQ(names[1], names.Find(compare, &c));
    EXPECT_EQ(names[0], names.Find(compare_untyped, "b"));
    EXPECT_EQ(nullptr, names.Find(compare_untyped, "z"));
    EXPECT_EQ(names[1], &names.FindOrInsert("c", compare));
    EXPECT_EQ(names[1], &names.FindOrAppend("c", compare));
    EXPECT_EQ("a", names.FindOrInsert("a", compare));
    EXPECT_EQ("d", names.FindOrAppend("d", compare));
    EXPECT_EQ("a b c d ", text(names));
    EXPECT_EQ("bb", names.ReplaceOrInsert("bb", initial));
    EXPECT_EQ("cc", names.ReplaceOrAppend("cc", initial));
    EXPECT_EQ("0", names.ReplaceOrInsert("0", initial));
    EXPECT_EQ("e", names.ReplaceOrAppend("e", initial));
    EXPECT_EQ("0 a bb cc d e ", text(names));
}

TEST(TOList, RemovesByKeyAndByFunctorAndLoops) {
    Names names = make({"a", "b", "a", "c", "b", "a"});
    std::string const b = "b", z = "z";
    EXPECT_EQ(1, names.Remove(compare_untyped, "a"));
    EXPECT_EQ(1, names.Remove(compare, &b));
    EXPECT_EQ(0, names.Remove(compare, &z));
    EXPECT_EQ("a c b a ", text(names));
    std::string seen;
    auto const until_c = [](Link* link, void* out) {
        *static_cast<std::string*>(out) += link->Contents();
        return link->Contents() == "c" ? 7 : 0;
    };
    EXPECT_EQ(7, names.Loop(until_c, &seen));
    EXPECT_EQ("ac", seen);
    EXPECT_EQ(2, names.RemoveLoop(compare, names.First()));  // a key in the list
    EXPECT_EQ(0, names.RemoveLoop(compare_untyped, "a"));
    struct Below : olist_cmpo_t {
        int operator()(olink_t const* link) const override {
            return static_cast<Link const*>(link)->Contents() < "c" ? 0 : 1;
        }
    } below;
    EXPECT_EQ(1, names.RemoveLoop(below));
    EXPECT_EQ(1, names.RemoveLoop(compare_untyped, "c"));
    EXPECT_EQ(0, names.Len() + names.Loop(until_c, &seen));
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
        if (round % 2 == 0)
            names.Sort(same_initial);
        else
            names.olist_t::Sort(base_initial);
        EXPECT_TRUE(std::equal(model.begin(), model.end(), names.begin(), names.end()));
        model.erase(std::unique(model.begin(), model.end(), equal), model.end());
        names.Uniq(same_initial);
        ASSERT_TRUE(std::equal(model.begin(), model.end(), names.begin(), names.end())) << round;
    }
    Names chain = make({"1", "2", "3", "5", "6"});  // 3 goes because of 2, which goes too
    chain.Uniq([](Link const* link, void const* before) { return same_initial(link, before) - 1; });
    EXPECT_EQ("1 5 ", text(chain));
}

TEST(TOList, SharesTheTextOfStrings) {
    TOList<String_t> names;
    String_t const a("a");
    for (String_t const& name : {a, String_t("b"), String_t()}) names.Append(name);
    EXPECT_EQ(a.Get(), names.First()->Get());
    EXPECT_TRUE(names.Get().IsNull());
    EXPECT_STREQ("a", names.Pop().Get());
    EXPECT_STREQ("b", (*TOListIterator<String_t>(names)).Get());
}

TEST(TOListIterator, WalksToTheLastLinkOfTheBinding) {
    Names names = make({"a", "b"});
    TOListIterator<std::string> it(names);
    names.Append("late");
    EXPECT_EQ("a", *it.Succ());
    EXPECT_EQ("a", *it());
    EXPECT_EQ("b", *it);
    EXPECT_EQ(1U, it->size());
    EXPECT_TRUE(it++);
    EXPECT_FALSE(it);
    EXPECT_EQ(nullptr, it());
    EXPECT_EQ(nullptr, (++it).Succ());
    it.Reset();
    EXPECT_EQ("late", *++ ++it);
    Names const empty;
    it.Bind(empty);
    EXPECT_EQ(nullptr, it());
}
