#include "net/strbinstream.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Content(OStrBinStream& out) {
    char const* const content = out.Str();
    return std::string(content, out.Len());
}

TEST(StrBinStream, GrowsItsOwnMemoryByDoubling) {
    struct {
        unsigned size, bytes, capacity;
    } const rows[] = {{16, 40, 64}, {16, 16, 16}, {16, 17, 32},    {16, 32, 64},
                      {0, 1, 1},    {0, 2, 4},    {1, 9000, 16384}};
    for (auto const& row : rows) {
        std::string const bytes(row.bytes, 'x');
        OStrBinStream out(row.size);
        out.Write(bytes.data(), static_cast<int>(row.bytes));
        EXPECT_EQ(row.bytes > 8192 ? 8192 : 0, out.Len());
        EXPECT_TRUE(bytes == Content(out)) << row.bytes;
        EXPECT_EQ(row.capacity, out.Capacity()) << row.size << ' ' << row.bytes;
    }
}

TEST(StrBinStream, FillsFixedMemoryAndThenEnds) {
    char memory[9] = "--------";
    OStrBinStream out(memory, 8);
    EXPECT_EQ(8, out.Write("abcdefghijkl", 12).Flush());
    EXPECT_STREQ("abcdefgh", memory);
    EXPECT_TRUE(out.Good());
    EXPECT_EQ(0, out.Flush());
    EXPECT_EQ(SockStream::kEof, out.Status());
    EXPECT_EQ(-1, out.Flush());
    out.Exceptions(SockStream::kEof);
    EXPECT_THROW(out.Flush(), SockIO::EndOfInput);
    EXPECT_THROW(out.Str(), SockIO::EndOfInput);
    EXPECT_EQ(8u, out.Len());

    OStrBinStream empty(8), none(nullptr, 8);
    EXPECT_NE(nullptr, empty.Str());
    EXPECT_EQ(SockStream::kEof, empty.Status());
    EXPECT_EQ(-1, none.Flush());
    EXPECT_EQ(SockStream::kBad, none.Status());
}

TEST(StrBinStream, ReadsBackWhatWasWritten) {
    OStrBinStream out(16);
    String_t const text(std::string_view(std::string(8000, 't')));
    out << 1 << text << -2.5 << endm << text << "end";
    IStrBinStream in(out);
    int one = 0;
    double real = 0;
    String_t first, second;
    char end[4];
    in >> one >> first >> real >> second >> end;
    EXPECT_TRUE(in.Good());
    EXPECT_EQ(1, one);
    EXPECT_EQ(-2.5, real);
    EXPECT_EQ(text, first);
    EXPECT_EQ(text, second);
    EXPECT_STREQ("end", end);
    in >> one;
    EXPECT_EQ(SockStream::kEof, in.Status());
    EXPECT_EQ(-1, in.Fill());
    in.Exceptions(SockStream::kEof);
    try {
        in.Fill();
        FAIL();
    } catch (SockIO::EndOfInput const& e) {
        EXPECT_EQ(-1, e.Code());
    }

    for (unsigned const length : {0u, 3u, 8191u, 8192u, 8193u}) {
        ByteString const bytes(length, 'b');
        IStrBinStream source(bytes);
        String_t line;
        source.Readln(line, nullptr);
        EXPECT_EQ(length, line.Len());
        EXPECT_EQ(length ? 0u : SockStream::kEof, source.Status());
    }
    EXPECT_EQ(0, IStrBinStream(nullptr, 5).Fill());
}

}  // namespace
