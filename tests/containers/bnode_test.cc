#include "containers/bnode.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <new>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

struct Node : bnode_t {
    int key;
    static int alive, dups_left;  // Dup() throws when none are left

    explicit Node(int k) : key(k) { ++alive; }
    Node(Node const& from) : bnode_t(from), key(from.key) { ++alive; }
    Node& operator=(Node const&) = default;
    ~Node() override { --alive; }
    bnode_t* Dup() const override {
        if (dups_left-- == 0) throw std::bad_alloc();
        return new Node(*this);
    }

    static int Cmp(bnode_t const* n, void const* key) {
        int const a = KeyOf(n), b = *static_cast<int const*>(key);
        return a < b ? -1 : a > b;
    }
    static bnode_t* Make(void* key) { return new Node(*static_cast<int*>(key)); }
    static int KeyOf(bnode_t const* n) { return static_cast<Node const*>(n)->key; }
};
int Node::alive = 0;
int Node::dups_left = -1;

bnode_t* Add(bnode_t* root, int key) {
    return bnode_t::Insert(root, Node::Cmp, &key, Node::Make, &key);
}

bnode_t* TreeOf(std::vector<int> const& keys) {
    bnode_t* root = nullptr;
    for (int const key : keys) root = Add(root, key);
    return root;
}

bnode_t* Chain(int n) {  // each node the right child of the one before
    bnode_t *root = nullptr, *last = nullptr;
    for (int i = 0; i < n; ++i) {
        bnode_t* const node = new Node(i);
        node->parent = last;
        (last ? last->right : root) = node;
        last = node;
    }
    return root;
}

// The shape as text, "(left key right)" with nothing for an empty place; wrong parent links show as
// "!".
std::string Shape(bnode_t const* n, bnode_t const* parent = nullptr) {
    if (!n) return "";
    return (n->parent == parent ? "(" : "!(") + Shape(n->left, n) + std::to_string(Node::KeyOf(n)) +
           Shape(n->right, n) + ")";
}

int Height(bnode_t const* n) { return n ? 1 + std::max(Height(n->left), Height(n->right)) : 0; }

struct Log {
    std::vector<int> keys;
    int stop_after = -1;
    static int Visit(bnode_t* n, void* arg) {
        Log* const log = static_cast<Log*>(arg);
        log->keys.push_back(Node::KeyOf(n));
        return static_cast<int>(log->keys.size()) == log->stop_after ? 7 : 0;
    }
};

typedef std::vector<int> Keys;

TEST(BnodeWalks, GoInTheirOrdersAndStopWhereToldAlsoOnAPart) {
    typedef std::function<void(bnode_t*, Keys&)> Model;
    Model const pre = [&](bnode_t* n, Keys& out) {
        if (!n) return;
        out.push_back(Node::KeyOf(n));
        pre(n->left, out);
        pre(n->right, out);
    };
    Model const in = [&](bnode_t* n, Keys& out) {
        if (!n) return;
        in(n->left, out);
        out.push_back(Node::KeyOf(n));
        in(n->right, out);
    };
    Model const rev = [&](bnode_t* n, Keys& out) {
        in(n, out);
        std::reverse(out.begin(), out.end());
    };
    Model const post = [&](bnode_t* n, Keys& out) {
        if (!n) return;
        post(n->left, out);
        post(n->right, out);
        out.push_back(Node::KeyOf(n));
    };
    struct {
        char const* name;
        int (*walk)(bnode_t*, bnode_t::VisitFn, void*);
        Model const& model;
    } const rows[] = {{"pre", bnode_t::Preorder, pre},
                      {"in", bnode_t::Inorder, in},
                      {"rev", bnode_t::Revorder, rev},
                      {"post", bnode_t::Postorder, post}};
    std::mt19937 random(11);
    for (int round = 0; round < 40; ++round) {
        bnode_t* root = nullptr;
        for (int i = 0; i < round; ++i) root = Add(root, static_cast<int>(random() % 50));
        for (auto const& row : rows) {
            for (bnode_t* part :
                 {root, root ? root->left : nullptr, root ? root->right : nullptr}) {
                Keys want;
                row.model(part, want);
                Log all;
                EXPECT_EQ(0, row.walk(part, Log::Visit, &all)) << row.name;
                EXPECT_EQ(want, all.keys) << row.name << " " << Shape(root);
                if (want.size() < 3) continue;
                Log some;
                some.stop_after = 3;
                EXPECT_EQ(7, row.walk(part, Log::Visit, &some)) << row.name;
                EXPECT_EQ(Keys(want.begin(), want.begin() + 3), some.keys) << row.name;
            }
        }
        bnode_t::DeleteTree(root);
    }
    EXPECT_EQ(0, Node::alive);
}

TEST(BnodeTree, AgreesWithASetUnderRandomChanges) {
    std::mt19937 random(5);
    std::set<int> model;
    bnode_t* root = nullptr;
    for (int step = 0; step < 6000; ++step) {
        int const key = static_cast<int>(random() % 64);
        if (random() % 2) {
            root = Add(root, key);
            model.insert(key);
        } else {
            root = bnode_t::Delete(root, Node::Cmp, &key);
            model.erase(key);
        }
        ASSERT_EQ(std::string::npos, Shape(root).find('!')) << Shape(root);
        ASSERT_EQ(static_cast<int>(model.size()), Node::alive);
        ASSERT_EQ(Node::alive, bnode_t::Size(root));

        int const probe = static_cast<int>(random() % 64), lo = static_cast<int>(random() % 66) - 1,
                  hi = lo - 2 + static_cast<int>(random() % 40);
        ASSERT_EQ(model.count(probe) == 1, bnode_t::Find(root, Node::Cmp, &probe) != nullptr);
        Keys want;
        if (lo <= hi) want.assign(model.lower_bound(lo), model.upper_bound(hi));
        Log up, down;
        bnode_t::Range(root, Log::Visit, &up, Node::Cmp, &lo, &hi);
        bnode_t::RevRange(root, Log::Visit, &down, Node::Cmp, &lo, &hi);
        ASSERT_EQ(want, up.keys) << lo << " to " << hi << " of " << Shape(root);
        ASSERT_EQ(Keys(want.rbegin(), want.rend()), down.keys) << lo << " to " << hi;
    }
    EXPECT_EQ(nullptr, bnode_t::DeleteTree(root));
    EXPECT_EQ(0, Node::alive);
}

TEST(BnodeRange, StopsAtTheFirstNonZeroResult) {
    bnode_t* const root = TreeOf({4, 2, 6, 1, 3, 5, 7});
    int const lo = 2, hi = 6;
    Log up, down;
    up.stop_after = down.stop_after = 2;
    EXPECT_EQ(7, bnode_t::Range(root, Log::Visit, &up, Node::Cmp, &lo, &hi));
    EXPECT_EQ((Keys{2, 3}), up.keys);
    EXPECT_EQ(7, bnode_t::RevRange(root, Log::Visit, &down, Node::Cmp, &lo, &hi));
    EXPECT_EQ((Keys{6, 5}), down.keys);
    bnode_t::DeleteTree(root);
}

TEST(BnodeDelete, ChoosesTheReplacement) {
    struct {
        Keys keys;
        int key;
        char const* want;
    } const rows[] = {
        {{5}, 5, ""},
        {{5, 3}, 9, "((3)5)"},
        {{5, 3, 2}, 3, "((2)5)"},        // only a left child
        {{5, 3, 4}, 3, "((4)5)"},        // only a right child
        {{5, 3, 2, 7}, 5, "((2)3(7))"},  // the left child itself moves up
        {{8, 3, 1, 6, 5, 9},
         8,
         "(((1)3(5))6(9))"},  // the rightmost of the left, its left child stays
        {{9, 8, 3, 1, 6, 5}, 8, "(((1)3((5)6))9)"},  // no right child: the left one, whole
    };
    for (auto const& row : rows) {
        bnode_t* root = TreeOf(row.keys);
        root = bnode_t::Delete(root, Node::Cmp, &row.key);
        EXPECT_EQ(row.want, Shape(root));
        bnode_t::DeleteTree(root);
    }
}

TEST(BnodeInsert, ReportsAnEqualNodeAndSurvivesAFailingFactory) {
    bnode_t* const root = TreeOf({2, 1, 3});
    int key = 3;
    Log found;
    EXPECT_EQ(root, bnode_t::Insert(root, Node::Cmp, &key, Node::Make, &key, Log::Visit, &found));
    EXPECT_EQ(Keys{3}, found.keys);
    key = 4;
    bnode_t::CreateFn const fail = [](void*) -> bnode_t* { throw std::bad_alloc(); };
    EXPECT_THROW(bnode_t::Insert(root, Node::Cmp, &key, fail, &key), std::bad_alloc);
    EXPECT_EQ("((1)2(3))", Shape(root));
    bnode_t::DeleteTree(root);
}

TEST(BnodeBuildTree, PutsTheMiddleOnTop) {
    std::vector<bnode_t*> nodes;
    for (int i = 1; i <= 7; ++i) nodes.push_back(new Node(i));
    bnode_t* const root = bnode_t::BuildTree(nullptr, nodes.data(), 0, 6);
    EXPECT_EQ("(((1)2(3))4((5)6(7)))", Shape(root));
    EXPECT_EQ("((2)3(4))", Shape(bnode_t::BuildTree(nullptr, nodes.data(), 1, 3)));
    EXPECT_EQ(nullptr, bnode_t::BuildTree(root, nodes.data(), 3, 2));
    for (bnode_t* n : nodes) delete n;
}

int ByKey(bnode_t* const* a, bnode_t* const* b) { return Node::KeyOf(*a) - Node::KeyOf(*b); }

TEST(BnodeBalance, RebuildsWithTheSameNodesInTheGivenOrder) {
    bnode_t* const chain = Chain(1000);
    bnode_t* root = chain->Balance(ByKey);
    EXPECT_EQ(10, Height(root));
    EXPECT_EQ(499, Node::KeyOf(root));
    EXPECT_EQ(1000, Node::alive);
    Log log;
    bnode_t::Inorder(root, Log::Visit, &log);
    EXPECT_TRUE(std::is_sorted(log.keys.begin(), log.keys.end()));
    EXPECT_EQ(std::string::npos, Shape(root).find('!'));
    root = root->Balance([](bnode_t* const* a, bnode_t* const* b) { return ByKey(b, a); });
    EXPECT_EQ(999, Node::KeyOf(bnode_t::Iterator::LDown(root)));
    bnode_t::DeleteTree(root);
}

TEST(BnodeCopy, IsDeepAndLeavesNothingBehindWhenItFails) {
    bnode_t* const root = TreeOf({4, 2, 6, 1, 3, 5, 7});
    bnode_t* const part = bnode_t::DupTree(root->left);
    EXPECT_EQ("((1)2(3))", Shape(part));
    EXPECT_EQ(10, Node::alive);
    bnode_t::DeleteTree(part);
    for (int dups = 0; dups < 7; ++dups) {
        Node::dups_left = dups;
        EXPECT_THROW(bnode_t::DupTree(root), std::bad_alloc);
        EXPECT_EQ(7, Node::alive) << "after " << dups << " nodes";
    }
    Node::dups_left = -1;
    EXPECT_EQ(nullptr, bnode_t::DupTree(nullptr));
    bnode_t::DeleteTree(root);
}

TEST(BnodeCheckTree, TellsTheLevels) {
    bnode_t* const root = TreeOf({5, 2, 9, 3, 7, 8});
    struct Levels {
        std::string text;
        static void Check(bnode_t* n, int level, void* arg) {
            static_cast<Levels*>(arg)->text +=
                std::to_string(Node::KeyOf(n)) + "@" + std::to_string(level) + " ";
        }
    } all, part;
    bnode_t::CheckTree(root, 0, Levels::Check, &all);
    EXPECT_EQ("2@1 3@2 5@0 7@2 8@3 9@1 ", all.text);
    bnode_t::CheckTree(root->right, 10, Levels::Check, &part);
    EXPECT_EQ("7@11 8@12 9@10 ", part.text);
    bnode_t::DeleteTree(root);
}

TEST(BnodeIterator, StepsBothWaysAndTakesNull) {
    bnode_t* const root = TreeOf({4, 2, 6, 1, 3, 7});
    typedef bnode_t::Iterator It;
    Keys up, down;
    for (bnode_t* n = It::LDown(root); n; n = n->right ? It::LDown(n->right) : It::LUp(n))
        up.push_back(Node::KeyOf(n));
    for (bnode_t* n = It::RDown(root); n; n = n->left ? It::RDown(n->left) : It::RUp(n))
        down.push_back(Node::KeyOf(n));
    EXPECT_EQ((Keys{1, 2, 3, 4, 6, 7}), up);
    EXPECT_EQ((Keys{7, 6, 4, 3, 2, 1}), down);
    for (auto step : {It::LDown, It::LUp, It::RDown, It::RUp}) EXPECT_EQ(nullptr, step(nullptr));
    bnode_t::DeleteTree(root);
}

TEST(BnodeDeepTree, OfAMillionLevelsNeedsNoStack) {
    int const n = 1000000, lo = 10, hi = 12;
    bnode_t* root = Chain(n);
    EXPECT_EQ(n, bnode_t::Size(root));
    for (auto walk : {bnode_t::Preorder, bnode_t::Revorder, bnode_t::Postorder}) {
        Log log;
        EXPECT_EQ(0, walk(root, Log::Visit, &log));
        EXPECT_EQ(static_cast<std::size_t>(n), log.keys.size());
    }
    Log range;
    bnode_t::Range(root, Log::Visit, &range, Node::Cmp, &lo, &hi);
    EXPECT_EQ((Keys{10, 11, 12}), range.keys);
    int const last = n - 1;
    root = bnode_t::Delete(root, Node::Cmp, &last);
    bnode_t* const copy = bnode_t::DupTree(root);
    EXPECT_EQ(n - 1, bnode_t::Size(copy));
    bnode_t::DeleteTree(copy);
    bnode_t::DeleteTree(root);
    EXPECT_EQ(0, Node::alive);
}

}  // namespace
