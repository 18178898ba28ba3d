#include "generic/gohash"

#include <optional>

#include "tests/support/test.h"

namespace {

using Name = std::optional<std::string>;  // none: the null string

// The hash table as documented, step by step, on plain vectors.
struct HashModel {
    struct Slot {
        int state = 0;  // 1 used, 2 deleted
        Name key;
        int value = 0;
    };
    std::vector<Slot> slots;
    unsigned card = 0;
    explicit HashModel(unsigned n) : slots(n ? n : 100) {}

    // The slot with this key, or -1; `best` is the first one on the way that is not in use.
    int Find(Name const& key, std::size_t* best = nullptr) const {
        std::size_t const hash = GHash(key ? key->c_str() : nullptr), size = slots.size();
        std::size_t const first = hash % size,
                          next = first + std::max<std::size_t>(hash / size % size, 1);
        for (std::size_t k = 0; k <= size; ++k) {
            std::size_t const i = k == 0 ? first : (next + k - 1) % size;
            if (slots[i].state == 1 && slots[i].key == key) return static_cast<int>(i);
            if (best && slots[i].state != 1) *std::exchange(best, nullptr) = i;
            if (slots[i].state == 0) break;
        }
        return -1;
    }
    // Whether the key was new.
    bool Add(Name const& key, int value) {
        if (card >= slots.size() - slots.size() / 8)
            Resize(2 * static_cast<unsigned>(slots.size()));
        std::size_t best = slots.size();
        if (Find(key, &best) >= 0) return false;
        slots.at(best) = {1, key, value}, ++card;
        return true;
    }
    void Erase(std::size_t i) { slots[i] = {2, {}, 0}, --card; }
    void Resize(unsigned n) {
        if (n <= card) {
            n = card < 88 ? 100 : 200;
            while (card >= 88 && n - n / 8 <= card) n *= 2;
        }
        HashModel fresh(n);
        for (auto const& slot : slots)
            if (slot.state == 1) fresh.Add(slot.key, slot.value);
        *this = fresh;
    }
};

using Table = OHashTable<String_t, StrCnt>;

String_t Text(Name const& name) { return name ? String_t(name->c_str()) : String_t(); }

// Half of them are clustered by the hash; the others have up to 24 characters beyond 127 in front.
Name RandomName(std::mt19937& random, unsigned names) {
    unsigned const number = random() % names;
    if (number < 2) return number ? Name("") : Name();
    return (number % 2 ? "net" : std::string(number % 25, '\xFA')) + std::to_string(number);
}

// The records of `table` are those of `model`, at the same distances.
void ExpectSame(HashModel const& model, Table const& table) {
    ASSERT_EQ(model.card, table.Card());
    ASSERT_EQ(model.slots.size(), table.Size());
    OHashIterator<String_t, StrCnt> next(table);
    StrCnt const* zero = nullptr;  // slot 0
    for (std::size_t i = 0; i < model.slots.size(); ++i) {
        auto const& slot = model.slots[i];
        if (slot.state != 1) continue;
        StrCnt const* const record = next();
        ASSERT_NE(nullptr, record);
        if (!zero) zero = record - i;
        ASSERT_EQ(zero + i, record);
        ASSERT_TRUE(Text(slot.key) == record->str && slot.value == record->cnt);
    }
    for (int i = 0; i < 2; ++i) ASSERT_EQ(nullptr, next());
}

// One random call on both; what empties or rebuilds is rare in large tables, so that they fill.
void Step(std::mt19937& random, HashModel& model, Table& table, unsigned names) {
    Name const name = RandomName(random, names);
    String_t const key = Text(name);
    bool const odd = random() % 2;
    int const value = static_cast<int>(random() % 1000), found = model.Find(name);
    auto const at = static_cast<std::size_t>(found);
    StrCnt record{key};
    record.cnt = value;
    unsigned const call = random() % 40;
    if (std::size_t best = 0;
        call == 0 && random() % names < 6 && found < 0 && 2 * model.card < model.slots.size()) {
        model.Find(name, &best), model.Add(name, value);
        ASSERT_EQ(value, table._Add(static_cast<unsigned>(best), record)->cnt);
    } else if (call < 16) {
        ASSERT_EQ(model.Add(name, value), (odd ? table.Add(record) : table += record) != nullptr);
    } else if (call < 20) {
        model.Add(name, value);
        ASSERT_EQ(model.slots[static_cast<std::size_t>(model.Find(name))].value,
                  table[record]->cnt);
    } else if (call < 30) {
        StrCnt const* const gone = found >= 0 && value % 3 == 0 ? table._Del(unsigned(found))
                                   : odd                        ? table.Del(key)
                                                                : table -= record;
        ASSERT_EQ(found >= 0, gone != nullptr);
        if (gone) model.Erase(at);
        ASSERT_TRUE(!gone || (gone->str.IsNull() && gone->cnt == 0));
    } else if (call < 35) {
        StrCnt const* const place = odd ? table.Find(key) : table.Find(record);
        ASSERT_EQ(found >= 0, place && place->cnt == model.slots[at].value);
        ASSERT_EQ(found >= 0, odd ? table & key : table & record);
    } else if (call == 35 && random() % names < 100) {
        unsigned const n = random() % 3 ? model.card + random() % 40 : random() % 300;
        model.Resize(n), table.Resize(n);
    } else if (call == 36) {
        OHashIterator<String_t, StrCnt> next(table);
        for (std::size_t i = 0; i < model.slots.size(); ++i) {
            if (model.slots[i].state != 1) continue;
            StrCnt* const current = next();
            if (random() % (model.card + 5) > 1) continue;
            model.Erase(i);
            ASSERT_TRUE(next.Del() == current && !next.Del());
        }
    } else if (call == 37 || call == 38) {
        Table copy(table), moved(std::move(table));
        ASSERT_EQ(0U, table.Card());  // NOLINT(bugprone-use-after-move)
        ASSERT_EQ(nullptr, table.Find(key));
        odd ? table = copy : table = std::move(moved);
    } else if (call == 39 && random() % names < 10) {
        model = HashModel(static_cast<unsigned>(model.slots.size()));
        table.Clear();
    }
}

// The last two rounds have thousands of slots.
TEST(Gohash, PutsRecordsWhereTheDocumentedProbesEnd) {
    ASSERT_EQ(0x9A08E3U, GHash("hierarchical net \xFA"));
    std::mt19937 random(23);
    for (int round = 0; round < 200; ++round) {
        bool const large = round >= 198;
        unsigned const n = large ? 5000 : round % 3 ? random() % 12 + 1 : round % 4 * 40;
        HashModel model(n);
        Table table(n);
        for (int step = 0; step < (large ? 20000 : 250); ++step) {
            Step(random, model, table, large ? 8000 : 150);
            if (!large || step % 500 == 0) ExpectSame(model, table);
            if (HasFatalFailure()) FAIL() << "round " << round << " step " << step;
        }
    }
    HashModel model(0);
    Table table(0);  // with so many that some share all 32 bits of any hash
    for (unsigned i = 0; i < 300000; ++i) {
        std::string const name = "hierarchical name/" + std::to_string(i * 2654435761U);
        table.Add(StrCnt(name.c_str()));
        if (i <= 11200) model.Add(name, 0);
        if (i == 11199 || i == 11200) ExpectSame(model, table);  // before and after the table grows
    }
    EXPECT_EQ(300000U, table.Card());
}

}  // namespace
