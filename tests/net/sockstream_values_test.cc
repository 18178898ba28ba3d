#include "net/sockstream_values.h"

#include <gtest/gtest.h>
#include <net/strbinstream.h>

#include <climits>
#include <cstdio>

#include "tests/net/scripted_streams.h"

namespace {

std::string Hex(std::string const& bytes) {
    std::string hex;
    char digits[3];
    for (char const c : bytes) {
        std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned char>(c));
        hex += digits;
    }
    return hex;
}

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

// What the value after `value` was sent and received is, and what it looked like on the way.
template <class T>
std::string Way(T value) {
    std::string const sent = Sent(value);
    T back{};
    Source in(sent, 0);
    in >> back;
    EXPECT_EQ(Raw(value), Raw(back));
    EXPECT_TRUE(in.Good());
    EXPECT_EQ(0u, in.Unread());
    return Hex(sent);
}

TEST(SockStreamValues, TravelAsTheTableSays) {
    struct {
        std::string got;
        char const* want;
    } const rows[] = {{Way('c'), "63"},
                      {Way(static_cast<unsigned char>(0xfe)), "fe"},
                      {Way<short>(-2), "fffe"},
                      {Way<unsigned short>(0xabcd), "abcd"},
                      {Way(1), "00000001"},
                      {Way(INT_MIN), "80000000"},
                      {Way(0xdeadbeefu), "deadbeef"},
                      {Way(-1L), "00000000ffffffff"},
                      {Way(static_cast<long>(INT_MIN)), "0000000080000000"},
                      {Way(0xfffffffful), "00000000ffffffff"},
                      {Way(-2LL), "fffffffffffffffe"},
                      {Way(0x0123456789abcdefull), "0123456789abcdef"},
                      {Way(1.5f), "3fc00000"},
                      {Way(-2.0), "c000000000000000"},
                      {Hex(Sent<char const*>("ab")), "616200"},
                      {Hex(Sent<char const*>(nullptr)), "00"},
                      {Hex(Sent(String_t())), "00000000"},
                      {Hex(Sent(String_t(""))), "00000000"},
                      {Hex(Sent(String_t("ab"))), "00000002616200"},
                      {Hex(Sent(ByteString())), "00000000"},
                      {Hex(Sent(ByteString("a\0", 2))), "000000026100"},
                      {Hex(Sent(TOList<String_t>())), "ffffffff"}};
    for (auto const& row : rows) EXPECT_EQ(row.want, row.got);

    if (sizeof(long) == 8) {
        Sink out;
        for (long long const value : {1LL << 31, -(1LL << 31) - 1, 1LL << 32}) {
            out << static_cast<long>(value);
            EXPECT_EQ(SockStream::kFailed, out.Clear()) << value;
            if (value >> 32 == 1) out << static_cast<unsigned long>(value);
        }
        EXPECT_EQ(SockStream::kFailed, out.Clear());
        EXPECT_EQ(0u, out.Pending());
    }
}

// One byte at a time, as documented: the count of the bytes that got in.
int ModelWrite(Sink& out, std::string const& bytes) {
    int count = 0;
    for (std::size_t i = 0; i < bytes.size() && out.Good(); ++i) {
        auto const [result, stored] = out.Store(bytes[i]);
        count += stored ? 1 : 0;
        if (result < 0) break;
    }
    return count;
}

void ModelText(Sink& out, std::string const& bytes) {
    for (char const c : bytes) {
        auto const [result, stored] = out.Store(c);
        if (result < 0 || !stored) break;
    }
}

TEST(SockStreamValues, AreWrittenAsByteAfterByte) {
    for (unsigned seed = 1; seed <= 12; ++seed) {
        std::mt19937_64 random(seed);
        Sink real(seed), model(seed);
        for (int step = 0; step < 1500; ++step) {
            std::uint64_t const bits = random();
            std::string const text(bits % 4 ? bits % 40 : bits % 5000,
                                   static_cast<char>('a' + bits % 26));
            int count = real.PCount();
            auto const number = [&](auto value) {
                real << value;
                count = ModelWrite(model, BigEnd(bits, sizeof value));
            };
            switch (random() % 12) {
                case 0: number(static_cast<short>(bits)); break;
                case 1: number(static_cast<int>(bits)); break;
                case 2: number(static_cast<unsigned long long>(bits)); break;
                case 3:
                    real << static_cast<unsigned long>(static_cast<std::uint32_t>(bits));
                    count = ModelWrite(model, BigEnd(static_cast<std::uint32_t>(bits), 8));
                    break;
                case 4: real << static_cast<char>(bits), ModelText(model, BigEnd(bits, 1)); break;
                case 5: real << text.c_str(), ModelText(model, text + '\0'); break;
                case 6:
                    real << String_t(std::string_view(text));
                    count = ModelWrite(model, BigEnd(text.size(), 4));
                    if (!text.empty()) count = ModelWrite(model, text + '\0');
                    break;
                case 7:
                    real << ByteString(text.data(), static_cast<unsigned>(text.size()));
                    count = ModelWrite(model, BigEnd(text.size(), 4));
                    if (!text.empty()) count = ModelWrite(model, text);
                    break;
                case 8:
                    real.Write(text.data(), static_cast<int>(text.size())),
                        count = ModelWrite(model, text);
                    break;
                case 9:
                    real.RevWrite(text.data(), static_cast<int>(text.size()));
                    count = ModelWrite(model, std::string(text.rbegin(), text.rend()));
                    break;
                case 10:
                    real.Writeln(String_t(text.c_str()), "\r\n");
                    count = ModelWrite(model, text), count += ModelWrite(model, "\r\n");
                    break;
                default:
                    if (bits % 8 == 0) real.Flush(), model.Flush();
                    if (bits % 2) real.Clear(), model.Clear();
            }
            ASSERT_EQ(model.Status(), real.Status()) << seed << ':' << step;
            ASSERT_EQ(count, real.PCount()) << seed << ':' << step;
            ASSERT_EQ(model.Content(), real.Content()) << seed << ':' << step;
        }
        EXPECT_EQ(model.log, real.log) << seed;
        EXPECT_EQ(model.sent, real.sent) << seed;
    }
}

// The documented decoding, one byte at a time.
struct Model {
    Source in;
    int count = 0;

    bool Read(char* p, int n, bool reversed) {
        count = 0;
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
    void Short(short& value) {
        char raw[2];
        std::memcpy(raw, &value, 2);
        Read(raw, 2, false);
        if (in.Good()) std::swap(raw[0], raw[1]);
        std::memcpy(&value, raw, 2);
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
        for (std::uint32_t i = 0; i <= length; ++i) {
            char c = 0;
            if (in.GetByte(&c) < 1 || (i < length && c == 0)) {
                in.SetFailed();
                break;
            }
            if (i < length) taken += c;
        }
        if (in.Good()) s = taken;
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
        unsigned const old = in.Clear();
        in.SetStatus(old & ~SockStream::kFailed);
    }
};

TEST(SockStreamValues, AreReadAsByteAfterByte) {
    for (unsigned seed = 1; seed <= 30; ++seed) {
        std::mt19937 random(seed);
        std::string data;
        std::vector<unsigned> kinds;
        while (kinds.size() < 600) {
            unsigned const bits = random(), kind = random() % 8;
            kinds.push_back(kind);
            std::string const text(bits % 8 ? bits % 40 : bits % 9000, 'x');
            String_t const s{std::string_view(text)};
            TOList<String_t> list;
            for (unsigned i = 0; i < bits % 3; ++i) list.Append(s);
            switch (kind) {
                case 0: data += BigEnd(bits, 1); break;
                case 1: data += BigEnd(bits, 2); break;
                case 2: data += BigEnd(bits, 4); break;
                case 3: data += BigEnd(bits, 8); break;
                case 4: data += text + '\0'; break;
                case 5: data += Sent(s); break;
                case 6:
                    data += Sent(ByteString(text.data(), static_cast<unsigned>(text.size())));
                    break;
                default: data += Sent(list);
            }
            if (bits % 32 == 0)
                data[data.size() - 1 - bits / 32 % std::min<std::size_t>(data.size(), 9)] ^= 64;
        }
        Source real(data, seed);
        Model model{Source(data, seed)};
        std::vector<char> real_text(data.size() + 1, '#'), model_text(real_text);
        for (std::size_t i = 0; i < kinds.size(); ++i) {
            int count = real.GCount();
            std::string got, want;
            auto const number = [&](auto from, auto const& read) {
                auto to = from;
                real >> from;
                got = Raw(from);
                read(to), count = model.count, want = Raw(to);
            };
            auto const plain = [&](auto& value) { model.Number(value); };
            String_t s("old");
            ByteString bytes("old", 3);
            TOList<String_t> list;
            switch (kinds[i]) {
                case 0: number('#', plain); break;
                case 1: number(short{0x1234}, [&](short& value) { model.Short(value); }); break;
                case 2: number(0x12345678, plain); break;
                case 3:
                    if (i % 2)
                        number(1.5, plain);
                    else
                        number(0x1234L, [&](long& value) { model.Long(value); });
                    break;
                case 4:
                    real >> real_text.data();
                    for (char* p = model_text.data(); model.in.GetByte(p) == 1 && *p; ++p) continue;
                    break;
                case 5:
                    want = "old";
                    real >> s, model.String(want), count = model.count;
                    got = s.Get();
                    break;
                case 6:
                    want = "old";
                    real >> bytes, model.Bytes(want), count = model.count;
                    got.assign(bytes.Len() ? bytes.Get() : "", bytes.Len());
                    break;
                default:
                    real >> list, model.List(want), count = model.count;
                    for (String_t const& element : list) got.append(element).append(",");
            }
            ASSERT_EQ(want, got) << seed << ':' << i << " kind " << kinds[i];
            ASSERT_EQ(model.in.Status(), real.Status()) << seed << ':' << i;
            ASSERT_EQ(count, real.GCount()) << seed << ':' << i;
            ASSERT_EQ(model.in.Rest(), real.Rest()) << seed << ':' << i;
            if (real.Status() & SockStream::kEof) break;
            if (random() % 2) real.Clear(), model.in.Clear();
        }
        EXPECT_EQ(model_text, real_text) << seed;
        EXPECT_EQ(model.in.log, real.log) << seed;
    }
}

TEST(SockStreamValues, OfTheLargestLengthsPass) {
    struct {
        bool string;
        unsigned length;
        bool good;
    } const rows[] = {{true, 8190, true},   {true, 8191, false},   {true, ~0u, false},
                      {false, 32785, true}, {false, 32786, false}, {false, ~0u, false}};
    for (auto const& row : rows) {
        std::string const data = BigEnd(row.length, 4) + std::string(40000, 'x');
        Source in(data, 0);
        String_t s, copy("old");
        ByteString bytes("old", 3), shared(bytes);
        s = copy;
        row.string ? in >> s : in >> bytes;
        EXPECT_EQ(row.good ? 0u : SockStream::kFailed, in.Status()) << row.length;
        EXPECT_EQ(row.good ? row.length : 0, row.string ? s.Len() : bytes.Len());
        EXPECT_STREQ("old", copy);
        EXPECT_EQ(3u, shared.Len());
    }
}

TEST(SockStreamValues, FlushTheTieBeforeEachRead) {
    std::string const data = BigEnd(3, 4) + "abc" + '\0' + BigEnd(3, 4) + "abc" + "d" + '\0' +
                             "ef" + BigEnd(1, 8) + BigEnd(2, 2) + "line\n" + "cut" + BigEnd(~0u, 4);
    Sink tie;
    Source in(data, 0, &tie);
    char text[8];
    char c;
    long big = 0;
    short small = 0;
    String_t s;
    ByteString bytes;
    TOList<String_t> list;
    std::vector<std::size_t> counts;
    auto const count = [&](auto const&) { counts.push_back(std::exchange(tie.log, {}).size()); };
    count(in >> s), count(in >> bytes), count(in >> text), count(in >> c), count(in >> c);
    count(in >> big), count(in >> small), count(in.Readln(s, "\n")), count(in.Readln(text, 4, ""));
    count(in >> list), count(in.Read(text, 0)), count(in.RevRead(text, 1)), count(in >> list);
    EXPECT_EQ((std::vector<std::size_t>{1, 2, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1}), counts);
}

}  // namespace
