#include "generic/tolist"

#include "tests/support/test.h"

namespace {

using Link = TOLink<std::string>;
using Names = TOList<std::string>;

int Compare(Link const* link, std::string const* key) { return link->Contents().compare(*key); }
int Initial(Link const* link, std::string const* key) { return link->Contents()[0] - (*key)[0]; }
int SameInitial(Link const* link, void const* other) {
    return Initial(link, &static_cast<Link const*>(other)->Contents());
}

Names Make(std::string const& words) {
    Names names;
    std::istringstream in(words);
    for (std::string word; in >> word;) names.Append(word);
    return names;
}

TEST(TOListDeathTest, FindsAddsReplacesAndTakesFromBothEnds) {
    Names names = Make("b c");
    EXPECT_EQ("a d", names.FindOrInsert("a", Compare) + ' ' + names.FindOrAppend("d", Compare));
    EXPECT_EQ(names.First(), &names.FindOrAppend("a", Compare));
    names.ReplaceOrInsert("bb", Initial) += "i", names.ReplaceOrAppend("cc", Initial) += "a";
    names.ReplaceOrInsert("0", Initial), names.ReplaceOrAppend("e", Initial);
    EXPECT_EQ("0 a bbi cca d e", Joined(names));
    EXPECT_EQ("0 e", names.Pop() + ' ' + names.Get());
    names.Clear();
    EXPECT_DEATH(names.Pop(), R"(include/generic/tolist:[0-9]+:.*p != 0)");
}

TEST(TOList, CopiesAreDeepAndMovesEmptyTheirSource) {
    Names names = Make("a b"), copy(names), target = Make("c");
    for (std::string& name : copy) name = name == "a" ? "x" : name;
    target = copy = static_cast<Names const&>(copy);
    EXPECT_EQ("a b, x b, x b", Joined(names) + ", " + Joined(copy) + ", " + Joined(target));
    names = std::move(copy);
    names.Reverse(copy);  // NOLINT(bugprone-use-after-move): a moved-from list is empty
    EXPECT_EQ("b x", Joined(copy));

    TOListIterator<std::string> it(names);
    names.Append("late");  // behind the last link of the binding
    EXPECT_TRUE(*it() == "x" && *it == "b" && it++ && !it && !it() && !(++it).Succ());
    it.Reset();
    EXPECT_EQ("late", *++ ++it);
}

TEST(TOList, FindsAndRemovesByKey) {
    Names names = Make("a b a c b a d");
    std::string const b = "b", z = "z";
    EXPECT_TRUE(names.Find(Compare, &b) == names[1] && !names.Find(Compare, &z));
    EXPECT_EQ(1, names.Remove(Compare, &b) + names.Remove(Compare, &z));
    EXPECT_EQ(3, names.RemoveLoop(Compare, names.First()));  // a key in the list
    EXPECT_EQ("c b d", Joined(names));
}

TEST(TOList, SortIsStableAndUniqKeepsTheFirst) {
    std::mt19937 random(3);
    Names names;
    std::vector<std::string> model;
    for (int i = 0; i < 3000; ++i) {
        model.push_back("abcde"[random() % 5] + std::to_string(i));
        names.Append(model.back());
    }
    std::stable_sort(model.begin(), model.end(), [](auto& a, auto& b) { return a[0] < b[0]; });
    names.Sort(SameInitial);
    EXPECT_EQ(Joined(model), Joined(names));
    names.Uniq(SameInitial);
    EXPECT_TRUE(names.Len() == 5 && *names[0] == model[0]);
}

}  // namespace
