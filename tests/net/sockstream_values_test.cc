#include "net/sockstream_values.h"

#include <net/strbinstream.h>

#include "tests/net/scripted_streams.h"
#include "tests/support/test.h"

namespace {

template <class T>
std::string Sent(T const& value) {
    Sink out;
    out << value << endm;
    return out.sent;
}

template <class T>
std::string Raw(T const& value) {
    return std::string(reinterpret_cast<char const*>(&value), sizeof value);
}

// The encoding of a number, digit by digit.
std::string BigEnd(std::uint64_t value, unsigned bytes) {
    std::string result;
    while (bytes-- > 0) result += static_cast<char>(value >> (8 * bytes));
    return result;
}

TEST(SockStreamValues, AreNotSentWhenTheyDoNotFit) {
    EXPECT_EQ(std::string(1 + 4 + 4, '\0'),
              Sent(static_cast<char const*>(nullptr)) + Sent(String_t()) + Sent(ByteString()));
    if (sizeof(long) == 4) return;
    Sink out;
    for (long long const value : {1LL << 31, -(1LL << 31) - 1, 1LL << 32}) {
        out << static_cast<long>(value);
        EXPECT_EQ(SockStream::kFailed, out.Clear()) << value;
    }
    out << 0x100000000ul;
    EXPECT_EQ(SockStream::kFailed, out.Clear());
    out << static_cast<long>(INT_MIN) << 0xfffffffful;
    EXPECT_EQ(BigEnd(1u << 31, 8) + BigEnd(0xffffffffu, 8), out.Content());
}

template <class Act>
std::string Thrown(Act const& act) {
    try {
        act();
    } catch (SockIO::BaseException const& e) {
        return e.Kind();
    }
    return "";
}

// Each value next to its bytes, one at a time; texts for C and characters go on after a failure.
TEST(SockStreamValues, AreWrittenAsByteAfterByte) {
    for (unsigned seed = 1; seed <= 12; ++seed) {
        std::mt19937_64 random(seed);
        Sink real(seed), model(seed);
        real.Exceptions(seed % 4 * 4), model.Exceptions(seed % 4 * 4);
        for (int step = 0; step < 1500; ++step) {
            std::uint64_t const bits = random();
            std::size_t const room = 8192 - real.Pending(),
                              to_end = room - std::min<std::size_t>(room, bits / 64 % 8);
            std::string const text(bits % 16 == 0 ? to_end : bits % (bits % 4 ? 40 : 5000),
                                   static_cast<char>('a' + bits % 26));
            String_t const s{std::string_view(text)};
            auto const length = static_cast<int>(text.size()), n = bits % 32 ? length : -length;
            int count = 0;
            auto const both = [&](auto const& act, bool always = false) {
                Sink all;
                act(all), all.Flush();
                std::string const want = Thrown([&] {
                    for (std::size_t i = 0; i < all.sent.size(); ++i) {
                        if (!always && !model.Good()) break;
                        auto const [result, stored] = model.Store(all.sent[i]);
                        count += stored ? 1 : 0;
                        if (result < 0 || (always && !stored)) break;
                    }
                });
                ASSERT_EQ(want, Thrown([&] { act(real); })) << seed << ':' << step;
            };
            switch (random() % 9) {
                case 0: both([&](auto& out) { out << static_cast<short>(bits); }); break;
                case 1:
                    both([&](auto& out) { out << static_cast<unsigned long long>(bits); });
                    break;
                case 2: both([&](auto& out) { out << static_cast<char>(bits); }, true); break;
                case 3: both([&](auto& out) { out << s.Get(); }, true); break;
                case 4: both([&](auto& out) { out << s; }); break;
                case 5: both([&](auto& out) { out << ByteString(s, s.Len()); }); break;
                case 6: both([&](auto& out) { out.RevWrite(s, n); }); break;
                case 7:
                    both([&](auto& out) { out.Writeln(s, n, bits % 3 ? "\r\n" : nullptr); });
                    ASSERT_EQ(count, real.PCount()) << seed << ':' << step;
                    break;
                default:
                    if (bits % 2) real.Clear(), model.Clear();
            }
            ASSERT_EQ(std::tuple(model.Status(), model.Content()),
                      std::tuple(real.Status(), real.Content()))
                << seed << ':' << step;
        }
        EXPECT_TRUE(model.log == real.log && model.sent == real.sent) << seed;
    }
}

// The value of each kind that is next, as bytes, and what is seen of the stream then.
auto TakeNext(Source& in, unsigned kind) {
    String_t const old("old");
    String_t s(old);
    ByteString bytes("old", 3);
    TOList<String_t> list;
    std::string got;
    std::string text(in.Left() + 1, '\0');
    std::string const thrown = Thrown([&] {
        auto const number = [&](auto value) {
            in >> value;
            got = Raw(value);
        };
        switch (kind) {
            case 0: number('#'); break;
            case 1: number(short{0x1234}); break;
            case 2: number(0x12345678); break;
            case 3: number(1.5); break;
            case 4: in >> text.data(); break;
            case 5: in >> s; break;
            case 6: in >> bytes; break;
            default: list.Append(s), in >> list;
        }
    });
    got.append(text.c_str()).append(s).append(bytes.View());
    for (String_t const& element : list) got.append(element).append(",");
    EXPECT_TRUE(old == "old" && (kind != 7 || list.Len() == 0 || !(*list.begin() == "old")));
    return std::tuple(got, thrown, in.Status(), in.GCount(), in.Left());
}

// However the bytes come in, also before and after a failing refill.
TEST(SockStreamValues, AreReadFromPiecesAsByteAfterByte) {
    unsigned const limits[] = {8190, 8191, 8192, 32785, 32786};
    for (unsigned seed = 1; seed <= 40; ++seed) {
        std::mt19937 random(seed);
        std::string data;
        std::vector<unsigned> kinds;
        while (kinds.size() < 300) {
            unsigned const bits = random(), kind = random() % 8;
            kinds.push_back(kind);
            unsigned const large = bits % 32 ? bits % 8190 : limits[bits / 32 % 5];
            std::string const text(bits % 8 ? bits % 40 : large, 'x');
            String_t const s{std::string_view(text)};
            TOList<String_t> list;
            for (unsigned i = 0; i < bits % 3; ++i) list.Append(s);
            switch (kind) {
                case 4: data += text + '\0'; break;
                case 5: data += Sent(s); break;
                case 6: data += BigEnd(text.size(), 4) + text; break;
                case 7: data += Sent(list); break;
                default: data += BigEnd(bits, 1u << kind);
            }
        }
        Sink tie, model_tie;
        Source real(data, seed, 0, &tie), model(data, seed, 1, &model_tie);
        real.Exceptions(seed % 3 * 7), model.Exceptions(seed % 3 * 7);
        for (unsigned const kind : kinds) {
            ASSERT_EQ(TakeNext(model, kind), TakeNext(real, kind)) << seed << " kind " << kind;
            ASSERT_EQ(model_tie.log.size(), tie.log.size()) << seed << " kind " << kind;
            if (random() % 2) real.Clear(), model.Clear();
        }
    }
}

}  // namespace
