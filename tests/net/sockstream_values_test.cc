#include "net/sockstream_values.h"

#include "tests/net/scripted_streams.h"
#include "tests/net/typed_values.h"

namespace {

template <class T>
std::string Sent(T const& value) {
    Sink out;
    out << value << endm;
    return out.sent;
}

// The encoding of a number, digit by digit.
std::string BigEnd(std::uint64_t value, unsigned bytes) {
    std::string result;
    while (bytes-- > 0) result += static_cast<char>(value >> (8 * bytes));
    return result;
}

TEST(SockStreamValues, KeepTheirBoundsAndNullTextsAreEmpty) {
    EXPECT_EQ(std::string(1 + 4, '\0'), Sent(static_cast<char const*>(nullptr)) + Sent(String_t()));
    Sink out;
    for (std::int64_t const value : {1LL << 31, -(1LL << 31) - 1, 1LL << 32}) {
        if (static_cast<long>(value) == value) out << static_cast<long>(value);
        EXPECT_EQ(sizeof(long) > 4 ? 2u : 0u, out.Clear()) << value;
    }
    out << static_cast<long>(INT_MIN) << 0xfffffffful;
    EXPECT_EQ(BigEnd(1u << 31, 8) + BigEnd(0xffffffffu, 8), out.Content());
}

// Each value next to its bytes, one at a time; texts for C and characters go on after a failure.
TEST(SockStreamValues, AreWrittenAsByteAfterByte) {
    std::string digits;
    while (digits.size() < 9000) digits += std::to_string(digits.size());
    for (unsigned seed = 1; seed <= 12; ++seed) {
        std::mt19937_64 random(seed);
        Sink real(seed), model(seed);
        real.Exceptions(seed % 4 * 4), model.Exceptions(seed % 4 * 4);
        for (int step = 0; step < 1500; ++step) {
            std::uint64_t const bits = random();
            unsigned const room = 8192 - real.Pending(), short_of = bits / 64 % 8;
            unsigned const to_end = room - std::min(room, short_of);
            std::string const text =
                digits.substr(bits % 99, bits % 16 ? bits % (bits % 4 ? 40 : 5000) : to_end);
            String_t const s{std::string_view(text)};
            auto const length = static_cast<int>(text.size()), n = bits % 32 ? length : -length;
            std::string const counted = BigEnd(text.size(), 4) + text, sent = n < 0 ? "" : text;
            char const* const term = bits % 3 ? "\r\n" : nullptr;
            std::pair<std::string, std::function<void()>> const all[] = {
                {BigEnd(bits, 1), [&] { real << static_cast<char>(bits); }},
                {text + '\0', [&] { real << s.Get(); }},
                {BigEnd(bits, 2), [&] { real << static_cast<short>(bits); }},
                {BigEnd(bits, 8), [&] { real << (0ull | bits); }},
                {counted, [&] { real << ByteString(s, s.Len()); }},
                {text.empty() ? counted : counted + '\0', [&] { real << s; }},
                {{sent.rbegin(), sent.rend()}, [&] { real.RevWrite(s, n); }},
                {sent + (term ? term : ""), [&] { real.Writeln(s, n, term); }},
                {"", [&] { real.Clear(), model.Clear(); }}};
            unsigned const kind = random() % 9;
            bool const always = kind < 2;
            std::string const got = Thrown(all[kind].second);
            int const uncounted = (kind == 4 || kind == 5) && length > 0 ? 4 : 0;
            int count = 0, place = 0;
            std::string const want = Thrown([&] {
                for (char const c : all[kind].first) {
                    if (!always && !model.Good()) break;
                    auto const [result, stored] = model.Store(c);
                    count += place++ >= uncounted && stored ? 1 : 0;
                    if (result < 0 || (always && !stored)) break;
                }
            });
            ASSERT_EQ(std::tuple(want, model.Status(), model.Content()),
                      std::tuple(got, real.Status(), real.Content()))
                << seed << ':' << step;
            if (kind < 2 || kind == 8 || !want.empty()) continue;
            ASSERT_EQ(count, real.PCount()) << seed << ':' << step;
        }
        EXPECT_TRUE(model.log == real.log && model.sent == real.sent) << seed;
    }
}

// What is next, and what is seen of the stream then.
auto TakeNext(Source& in, char letter, Sink& tie) {
    std::string shown;
    tie.log.clear();
    std::string const thrown = Thrown([&] { shown = take.at(letter)(in).shown; });
    EXPECT_FALSE(tie.log.empty());
    return std::tuple(shown, thrown, in.Status(), in.GCount(), in.Left(), tie.log.size());
}

// However the bytes come in, also before and after a failing refill.
TEST(SockStreamValues, AreReadFromPiecesAsByteAfterByte) {
    unsigned const limits[] = {8190, 8191, 8192, 32785, 32786};
    for (unsigned seed = 1; seed <= 40; ++seed) {
        std::mt19937 random(seed);
        std::string data, types(300, ' ');
        for (char& type : types) {
            unsigned const bits = random(), large = bits % 32 ? bits % 8190 : limits[bits / 32 % 5];
            std::string const text(bits % 8 ? bits % 40 : large, 'x');
            String_t const s{std::string_view(text)};
            TOList<String_t> list;
            for (unsigned i = 0; i < bits % 3; ++i) list.Append(s);
            unsigned const kind = random() % 8;
            type = "ChILzsbS"[kind];
            data += kind < 4    ? BigEnd(bits, 1u << kind)
                    : kind == 4 ? text + '\0'
                    : kind == 5 ? Sent(s)
                    : kind == 6 ? BigEnd(text.size(), 4) + text
                                : Sent(list);
        }
        Sink tie, model_tie;
        Source real(data, seed, 0, &tie), model(data, seed, 1, &model_tie);
        real.Exceptions(seed % 3 * 7), model.Exceptions(seed % 3 * 7);
        for (char const type : types) {
            ASSERT_EQ(TakeNext(model, type, model_tie), TakeNext(real, type, tie)) << seed << type;
            if (random() % 2) real.Clear(), model.Clear();
        }
    }
}

}  // namespace
