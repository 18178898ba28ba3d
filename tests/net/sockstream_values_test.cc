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

// What was thrown, if anything.
template <class Act>
std::string Thrown(Act const& act) {
    try {
        act();
    } catch (SockIO::BaseException const& e) {
        return e.Kind();
    }
    return "";
}

// The documented encoding, one byte at a time.
struct Writer {
    Sink out;
    int count = 0;  // of the bytes that got in

    void Append(std::string const& bytes) {
        for (std::size_t i = 0; i < bytes.size() && out.Good(); ++i) {
            auto const [result, stored] = out.Store(bytes[i]);
            count += stored ? 1 : 0;
            if (result < 0) break;
        }
    }
    void Write(std::string const& bytes) { count = 0, Append(bytes); }
    void Sized(std::string const& text, std::string const& end) {
        Write(BigEnd(text.size(), 4));
        if (!text.empty()) Write(text + end);
    }
    void Text(std::string const& bytes) {
        for (char const c : bytes)
            if (auto const [result, stored] = out.Store(c); result < 0 || !stored) break;
    }
};

TEST(SockStreamValues, AreWrittenAsByteAfterByte) {
    for (unsigned seed = 1; seed <= 12; ++seed) {
        std::mt19937_64 random(seed);
        Sink real(seed);
        Writer model{Sink(seed)};
        Sink& out = model.out;
        real.Exceptions(seed % 4 * 4), out.Exceptions(seed % 4 * 4);
        for (int step = 0; step < 1500; ++step) {
            std::uint64_t const bits = random();
            std::size_t const room = 8192 - real.Pending(),
                              to_end = room - std::min<std::size_t>(room, bits / 64 % 8);
            std::string const text(bits % 16 == 0 ? to_end : bits % (bits % 4 ? 40 : 5000),
                                   static_cast<char>('a' + bits % 26));
            String_t const s{std::string_view(text)};
            auto const length = static_cast<int>(text.size()), n = bits % 32 ? length : -length;
            std::string const backwards(text.rbegin(), text.rend());
            char const* const term = bits % 3 ? "\r\n" : nullptr;
            std::string thrown, want;
            auto const both = [&](auto const& act, auto const& model_act) {
                thrown = Thrown(act), want = Thrown(model_act);
            };
            auto const number = [&](auto value) {
                both([&] { real << value; }, [&] { model.Write(BigEnd(bits, sizeof value)); });
            };
            auto const c = static_cast<char>(bits);
            switch (random() % 10) {
                case 0: number(static_cast<short>(bits)); break;
                case 1: number(static_cast<unsigned long long>(bits)); break;
                case 2: both([&] { real << c; }, [&] { model.Text({c}); }); break;
                case 3: both([&] { real << s.Get(); }, [&] { model.Text(text + '\0'); }); break;
                case 4: both([&] { real << s; }, [&] { model.Sized(text, {'\0'}); }); break;
                case 5:
                    both([&] { real << ByteString(text.data(), text.size()); },
                         [&] { model.Sized(text, ""); });
                    break;
                case 6:
                    both([&] { real.Write(text.data(), n); },
                         [&] { model.Write(n < 0 ? "" : text); });
                    break;
                case 7:
                    both([&] { real.RevWrite(text.data(), n); },
                         [&] { model.Write(n < 0 ? "" : backwards); });
                    break;
                case 8:
                    both([&] { real.Writeln(s, term); },
                         [&] { model.Write(text), model.Append(term ? term : ""); });
                    break;
                default:
                    if (bits % 8 == 0) both([&] { real.Flush(); }, [&] { out.Flush(); });
                    if (bits % 2) real.Clear(), out.Clear();
            }
            ASSERT_EQ(std::tuple(want, out.Status(), model.count, out.Content()),
                      std::tuple(thrown, real.Status(), real.PCount(), real.Content()))
                << seed << ':' << step;
        }
        EXPECT_TRUE(out.log == real.log && out.sent == real.sent) << seed;
    }
}

// The documented decoding, one byte at a time.
struct Reader {
    Source in;
    int count = 0;
    std::size_t flushes = 0;  // that the tie has to see

    bool Read(char* p, int n, bool reversed) {
        count = 0;
        ++flushes;
        while (count < n && in.Good()) {
            if (in.GetByte(p + (reversed ? n - 1 - count : count)) < 1) break;
            ++count;
        }
        return count == n && in.Good();
    }
    template <class T>
    bool Number(T& value) {
        return Read(reinterpret_cast<char*>(&value), sizeof value, true);
    }
    void Text(char* p) {
        ++flushes;
        while (in.GetByte(p) == 1 && *p) ++p;
    }
    void Short(short& value) {
        char* const raw = reinterpret_cast<char*>(&value);
        Read(raw, 2, false);
        if (in.Good()) std::swap(raw[0], raw[1]);
    }
    void Long(long& value) {
        std::uint64_t bits = 0;
        if (!Number(bits)) return;
        value = static_cast<std::int32_t>(bits);
        if (bits >> 32) in.SetFailed();
    }
    bool String(std::string& s) {
        std::uint32_t length = 0;
        if (!Number(length)) return false;
        s.clear();
        if (length > 8190) in.SetFailed();
        if (length > 8190 || length == 0) return length == 0;
        std::string taken;
        for (char c = 0; taken.size() <= length; taken += c) {
            if (in.GetByte(&c) == 1 && (c != 0 || taken.size() == length)) continue;
            in.SetFailed();
            break;
        }
        if (in.Good()) s = taken.substr(0, length);
        return in.Good();
    }
    void Bytes(std::string& s) {
        std::uint32_t length = 0;
        if (!Number(length)) return;
        s.assign(length > 32785 ? 0 : length, '\0');
        if (length > 32785) in.SetFailed();
        if (!s.empty()) Read(&s[0], static_cast<int>(length), false);
    }
    void List(std::string& joined) {
        joined.clear();
        for (std::string s; String(s);) joined += s + ',';
        unsigned const mask = in.Exceptions(0), old = in.Clear();
        in.SetStatus(old & ~SockStream::kFailed);
        in.Exceptions(mask);
    }
};

TEST(SockStreamValues, AreReadAsByteAfterByte) {
    unsigned const limits[] = {8190, 8191, 8192, 32785, 32786};
    for (unsigned seed = 1; seed <= 60; ++seed) {
        std::mt19937 random(seed);
        std::string data;
        std::vector<unsigned> kinds;
        while (kinds.size() < 600) {
            unsigned const bits = random(), kind = random() % 9;
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
                case 7: data += BigEnd(bits % 16 ? bits : 1ull << 40, 8); break;
                case 8: data += Sent(list); break;
                default: data += BigEnd(bits, 1u << kind);
            }
            if (seed % 2 == 0 && bits % 32 == 0)
                data[data.size() - 1 - bits / 32 % std::min<std::size_t>(data.size(), 9)] ^= 64;
        }
        Sink tie;
        Source real(data, seed, &tie);
        Reader model{Source(data, seed)};
        real.Exceptions(seed % 3 * 7), model.in.Exceptions(seed % 3 * 7);
        std::vector<char> real_text(data.size() + 1, '#'), model_text(real_text);
        for (std::size_t i = 0; i < kinds.size(); ++i) {
            int const count = real.GCount();
            std::string got, want = "old", thrown, as;
            auto const both = [&](auto const& act, auto const& model_act) {
                thrown = Thrown(act), as = Thrown(model_act);
            };
            auto const number = [&](auto from, auto read) {
                auto to = from;
                both([&] { real >> from; }, [&] { (model.*read)(to); });
                got = Raw(from), want = Raw(to);
            };
            String_t const old("old");
            String_t s(old);
            ByteString bytes("old", 3);
            TOList<String_t> list;
            switch (kinds[i]) {
                case 0: number('#', &Reader::Number<char>); break;
                case 1: number(short{0x1234}, &Reader::Short); break;
                case 2: number(0x12345678, &Reader::Number<int>); break;
                case 3: number(1.5, &Reader::Number<double>); break;
                case 7: number(0x1234L, &Reader::Long); break;
                case 4:
                    both([&] { real >> real_text.data(); }, [&] { model.Text(model_text.data()); });
                    want.clear(), model.count = count;
                    break;
                case 5: both([&] { real >> s; }, [&] { model.String(want); }), got = s.Get(); break;
                case 6:
                    both([&] { real >> bytes; }, [&] { model.Bytes(want); }), got = bytes.View();
                    break;
                default:
                    both([&] { real >> list; }, [&] { model.List(want); });
                    for (String_t const& element : list) got.append(element).append(",");
            }
            Source& in = model.in;
            ASSERT_EQ(
                std::tuple(as, want, in.Status(), model.count, model.flushes, in.Rest()),
                std::tuple(thrown, got, real.Status(), real.GCount(), tie.log.size(), real.Rest()))
                << seed << ':' << i << " kind " << kinds[i];
            ASSERT_EQ(old, "old");
            if (real.Status() & SockStream::kEof) break;
            if (random() % 2) real.Clear(), model.in.Clear();
        }
        EXPECT_TRUE(model_text == real_text && model.in.log == real.log) << seed;
    }
}

}  // namespace
