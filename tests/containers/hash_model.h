// The hash table as documented, step by step, on plain vectors.
#ifndef KORBASE_TESTS_CONTAINERS_HASH_MODEL_H
#define KORBASE_TESTS_CONTAINERS_HASH_MODEL_H

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

using Name = std::optional<std::string>;  // none: the null string

struct HashModel {
    struct Slot {
        int state = 0;  // 1 used, 2 deleted
        Name key;
        int value = 0;
    };
    std::vector<Slot> slots;
    unsigned card = 0;

    explicit HashModel(unsigned n) : slots(n ? n : 100) {}

    static unsigned Hash(Name const& key) {
        unsigned h = 0;
        for (char const c : key.value_or("")) {
            h = h * 16 + static_cast<unsigned char>(c);
            if (h > 0xFFFFFF) h = (h % 0x1000000) ^ (h / 0x1000000);
        }
        return h;
    }
    // The slot that is looked at after `k` others.
    std::size_t Probe(Name const& key, std::size_t k) const {
        std::size_t const hash = Hash(key), size = slots.size();
        std::size_t const step = hash / size % size;
        return k == 0 ? hash % size : (hash % size + (step ? step : 1) + k - 1) % size;
    }
    // The slot with this key, or -1; `best` is the first one on the way that is not in use.
    int Find(Name const& key, std::size_t* best = nullptr) const {
        for (std::size_t k = 0; k <= slots.size(); ++k) {
            std::size_t const i = Probe(key, k);
            if (slots[i].state == 1 && slots[i].key == key) return static_cast<int>(i);
            if (best && slots[i].state != 1) {
                *best = i;
                best = nullptr;
            }
            if (slots[i].state == 0) break;
        }
        return -1;
    }
    bool Full() const {
        return std::none_of(slots.begin(), slots.end(), [](Slot const& s) { return s.state != 1; });
    }
    // Whether the key was new.
    bool Add(Name const& key, int value) {
        if (card >= slots.size() - slots.size() / 8)
            Resize(2 * static_cast<unsigned>(slots.size()));
        std::size_t best = slots.size();
        if (Find(key, &best) >= 0) return false;
        Put(best, key, value);
        return true;
    }
    void Put(std::size_t i, Name const& key, int value) {
        slots.at(i) = {1, key, value};
        ++card;
    }
    void Erase(std::size_t i) {
        slots[i] = {2, {}, 0};
        --card;
    }
    void Resize(unsigned n) {
        if (n <= card) {
            n = 100;
            if (card >= 88) do
                    n *= 2;
                while (n - n / 8 <= card);
        }
        HashModel fresh(n);
        for (auto const& slot : slots)
            if (slot.state == 1) fresh.Add(slot.key, slot.value);
        *this = fresh;
    }
};

#endif
