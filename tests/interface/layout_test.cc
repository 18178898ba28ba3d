// The documented data members: their types, their order and, where nothing may follow, the size
// they add up to. Programs hold these objects by value, and debuggers and other languages read
// them: a change is a new interface.
//
// This file is compiled without access control, which is how it sees protected and private members.
#include <gtest/gtest.h>
#include <korbase.h>

#include <cstddef>
#include <cstring>
#include <fstream>
#include <initializer_list>

// Classes with virtual functions are no standard-layout types; the compilers that we support still
// know where their members stand.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

namespace {

struct Field {
    bool typed;
    std::size_t at, size, align;
    constexpr std::size_t End() const { return at + size; }
};

constexpr std::size_t Aligned(std::size_t n, std::size_t align) {
    return (n + align - 1) / align * align;
}

// Where the fields end, when they follow each other from `start` as the platform aligns them; else
// 0.
constexpr std::size_t EndOf(std::size_t start, std::initializer_list<Field> fields) {
    for (Field const& field : fields) {
        if (!field.typed || field.at != Aligned(start, field.align)) return 0;
        start = field.End();
    }
    return start;
}

#define FIELD(Class, Type, member)                                                            \
    Field {                                                                                   \
        std::is_same_v<decltype(Class::member), Type>, offsetof(Class, member), sizeof(Type), \
            alignof(Type)                                                                     \
    }
// The class begins with these fields, `start` bytes from its beginning; or it consists of them.
#define BEGINS(Class, start, ...) static_assert(EndOf(start, {__VA_ARGS__}) != 0, #Class)
#define CONSISTS(Class, start, ...) \
    static_assert(Aligned(EndOf(start, {__VA_ARGS__}), alignof(Class)) == sizeof(Class), #Class)

constexpr std::size_t kTable = sizeof(void*);  // the pointer to the virtual functions

// Text.
CONSISTS(Except, kTable, FIELD(Except, char const*, kind), FIELD(Except, String_t, message),
         FIELD(Except, String_t, file), FIELD(Except, int, line));
CONSISTS(String_t, 0, FIELD(String_t, String_t::Srep*, rep));
CONSISTS(String_t::Srep, 0, FIELD(String_t::Srep, char*, text),
         FIELD(String_t::Srep, unsigned, count));
CONSISTS(ByteString, 0, FIELD(ByteString, ByteString::Srep*, rep));
CONSISTS(ByteString::Srep, 0, FIELD(ByteString::Srep, char*, data),
         FIELD(ByteString::Srep, unsigned, length), FIELD(ByteString::Srep, unsigned, count));
CONSISTS(str_arr_t, 0, FIELD(str_arr_t, char*, buffer), FIELD(str_arr_t, char*, end),
         FIELD(str_arr_t, std::int32_t, capacity));
BEGINS(StringTok, 0, FIELD(StringTok, String_t, text), FIELD(StringTok, char*, cursor),
       FIELD(StringTok, char, sep));
BEGINS(StringSplitter, 0, FIELD(StringSplitter, String_t, text),
       FIELD(StringSplitter, String_t, separators), FIELD(StringSplitter, String_t, trim),
       FIELD(StringSplitter, char*, start), FIELD(StringSplitter, char*, end),
       FIELD(StringSplitter, unsigned, step));
BEGINS(ArgumentVector, 0, FIELD(ArgumentVector, int, argc), FIELD(ArgumentVector, char**, argv));
using StringMap = TMap<String_t, String_t, GStringCmp>;
BEGINS(Vars, 0, FIELD(Vars, StringMap, vars), FIELD(Vars, char, marker));

// Arrays.
static_assert(VARR_ADD == 0 && VARR_DOUBLE == 1 && sizeof(VarrTypeT) == 4);
using Ints = TVarr<int>;
BEGINS(Ints, 0, FIELD(Ints, int*, arr), FIELD(Ints, int*, arrp), FIELD(Ints, unsigned, size),
       FIELD(Ints, unsigned, incr), FIELD(Ints, VarrTypeT, type));
struct IntOrder;
static_assert(sizeof(TSortedVector<int, IntOrder>) == sizeof(Ints));
static_assert(sizeof(TVarrCmp<int>) == kTable && sizeof(TVarrRange<int>) == kTable);
using Found = TResult<int>;
CONSISTS(Found, 0, FIELD(Found, int*, ptr), FIELD(Found, int, found));
CONSISTS(varr_t, 0, FIELD(varr_t, std::int32_t, type), FIELD(varr_t, std::int32_t, elemSize),
         FIELD(varr_t, std::int32_t, capacity), FIELD(varr_t, std::int32_t, incr),
         FIELD(varr_t, char*, wp), FIELD(varr_t, char*, base));
using Doubles = TVector<double>;
CONSISTS(Doubles, 0, FIELD(Doubles, double*, m), FIELD(Doubles, int, rows));
CONSISTS(AutoArr<char>, 0, FIELD(AutoArr<char>, char*, arr));

// Pools and lists.
using Tag = char[4];
BEGINS(Pool, 0, FIELD(Pool, void*, freeList), FIELD(Pool, Pool::Chunk*, chunks),
       FIELD(Pool, pthread_mutex_t, mutex), FIELD(Pool, Tag, tag));
CONSISTS(olink_t, kTable, FIELD(olink_t, olink_t*, next));
CONSISTS(olist_t, 0, FIELD(olist_t, olink_t*, last));
static_assert(sizeof(olist_cmpo_t) == kTable && sizeof(olist_actiono_t) == kTable);
CONSISTS(slink_t, 0, FIELD(slink_t, slink_t*, next), FIELD(slink_t, void*, data));
CONSISTS(slist_t, 0, FIELD(slist_t, slink_t*, last));
CONSISTS(DLink, kTable, FIELD(DLink, DLink*, next), FIELD(DLink, DLink*, prev));
CONSISTS(DList, 0, FIELD(DList, DLink*, last));
BEGINS(DListIterator, 0, FIELD(DListIterator, DList*, list), FIELD(DListIterator, DLink*, cur));
CONSISTS(DPLink, 0, FIELD(DPLink, DPLink*, next), FIELD(DPLink, DPLink*, prev),
         FIELD(DPLink, void*, data));
CONSISTS(DPList, 0, FIELD(DPList, DPLink*, last));
using StringLink = TOLink<String_t>;
CONSISTS(StringLink, sizeof(olink_t), FIELD(StringLink, String_t, value));
static_assert(sizeof(TOList<String_t>) == sizeof(olist_t));
using StringListIterator = TOListIterator<String_t>;
CONSISTS(StringListIterator, 0, FIELD(StringListIterator, TOList<String_t> const*, list),
         FIELD(StringListIterator, StringLink*, cur), FIELD(StringListIterator, StringLink*, stop));
static_assert(sizeof(ObjectBase) == kTable);

// Hash tables. Their arrays are owned by std::unique_ptr, which is one pointer.
CONSISTS(StrCnt, 0, FIELD(StrCnt, String_t, str), FIELD(StrCnt, std::int32_t, cnt));
CONSISTS(StrStrMap, 0, FIELD(StrStrMap, String_t, key), FIELD(StrStrMap, String_t, value));
CONSISTS(TabStr, 0, FIELD(TabStr, String_t, str));
using Counts = OHashTable<String_t, StrCnt>;
BEGINS(Counts, 0, FIELD(Counts, unsigned, size), FIELD(Counts, unsigned, card),
       FIELD(Counts, std::unique_ptr<std::uint8_t[]>, state),
       FIELD(Counts, std::unique_ptr<StrCnt[]>, slots));
static_assert(sizeof(Counts::state) == sizeof(void*) && sizeof(Counts::slots) == sizeof(void*));
using CountsIterator = OHashIterator<String_t, StrCnt>;
BEGINS(CountsIterator, 0, FIELD(CountsIterator, Counts*, table),
       FIELD(CountsIterator, std::int32_t, pos));

// Trees and maps.
CONSISTS(bnode_t, kTable, FIELD(bnode_t, bnode_t*, parent), FIELD(bnode_t, bnode_t*, left),
         FIELD(bnode_t, bnode_t*, right));
CONSISTS(AVLnode, sizeof(bnode_t), FIELD(AVLnode, int, bal));
constexpr std::size_t kAVLnodeEnd = FIELD(AVLnode, int, bal).End();  // what derives starts here
using StringNode = TMapNode<String_t, String_t, GStringCmp>;
BEGINS(StringNode, kAVLnodeEnd, FIELD(StringNode, String_t, key),
       FIELD(StringNode, String_t, value));
using StringData = TMapData<String_t, String_t, GStringCmp>;
CONSISTS(StringData, 0, FIELD(StringData, String_t const*, keyp),
         FIELD(StringData, String_t const*, valuep), FIELD(StringData, String_t*, result),
         FIELD(StringData, String_t*, existing));
CONSISTS(StringMap, 0, FIELD(StringMap, StringNode*, root));
using MapStep = StringMap::Iterator;
CONSISTS(MapStep, 0, FIELD(MapStep, StringMap*, map), FIELD(MapStep, StringNode*, cur));
using Pair = TPair<char, double>;
CONSISTS(Pair, 0, FIELD(Pair, char, first), FIELD(Pair, double, second));

// Bit sets.
static_assert(sizeof(set_word_t) == 4);
BEGINS(Set, 0, FIELD(Set, unsigned, fixed), FIELD(Set, unsigned, num),
       FIELD(Set, set_word_t*, bits));
CONSISTS(Setiterator, 0, FIELD(Setiterator, unsigned, pos), FIELD(Setiterator, unsigned, limit),
         FIELD(Setiterator, set_word_t const*, bits), FIELD(Setiterator, unsigned, num));

// Services of the operating system.
CONSISTS(Process, 0, FIELD(Process, int, pid), FIELD(Process, int, status));
CONSISTS(Process::Arg, 0, FIELD(Process::Arg, String_t, text));
static_assert(sizeof(std::basic_fdfilebuf<char>) == sizeof(std::filebuf));
using Pipe = int[2];
CONSISTS(pstream_base, 0, FIELD(pstream_base, Pipe, fds), FIELD(pstream_base, Process, child));
static_assert(sizeof(Pathname) == sizeof(String_t));
CONSISTS(RandName, 0, FIELD(RandName, char const*, alphabet),
         FIELD(RandName, std::uint32_t, length), FIELD(RandName, std::uint32_t, state));
CONSISTS(TmpFile, 0, FIELD(TmpFile, String_t, name));
CONSISTS(TempFile, 0, FIELD(TempFile, Pathname, path), FIELD(TempFile, int, fd));
CONSISTS(TempDir, 0, FIELD(TempDir, Pathname, path));
CONSISTS(DateTime, 0, FIELD(DateTime, std::time_t, seconds));
CONSISTS(ShlHandle, 0, FIELD(ShlHandle, shl_t, handle));

// Networking. The mask of a stream's own exceptions stands where the documents put it, under
// another name.
CONSISTS(SockIO::BaseException, FIELD(Except, int, line).End(),
         FIELD(SockIO::BaseException, int, code));
static_assert(sizeof(SockIO::TimedOut) == sizeof(SockIO::BaseException));
CONSISTS(SockIO::SockAddr, 0, FIELD(SockIO::SockAddr, String_t, host),
         FIELD(SockIO::SockAddr, std::unique_ptr<SockIO::SockAddrRep>, rep),
         FIELD(SockIO::SockAddr, int, family), FIELD(SockIO::SockAddr, unsigned short, port));
static_assert(sizeof(SockIO::SockAddr::rep) == sizeof(void*) &&
              sizeof(SockIO::SockAddrRep) == kTable);
CONSISTS(SockIO::SockAddrIn4, kTable, FIELD(SockIO::SockAddrIn4, sockaddr_in, addr));
CONSISTS(SockIO::SockAddrIn6, kTable, FIELD(SockIO::SockAddrIn6, sockaddr_in6, addr));
CONSISTS(SockIO::SockAddrUn, kTable, FIELD(SockIO::SockAddrUn, sockaddr_un, addr));
static_assert(sizeof(SockIO::PollFd) == sizeof(pollfd));
CONSISTS(ClientSocketBase, kTable, FIELD(ClientSocketBase, int, fd));
BEGINS(ServerSocketBase, kTable, FIELD(ServerSocketBase, int, fd));
constexpr std::size_t kClientEnd = FIELD(ClientSocketBase, int, fd).End();
constexpr std::size_t kServerEnd = FIELD(ServerSocketBase, int, fd).End();
CONSISTS(ClientSocketIn, kClientEnd, FIELD(ClientSocketIn, SockIO::SockAddr, remote),
         FIELD(ClientSocketIn, SockIO::SockAddr, local));
CONSISTS(ClientSocketUn, kClientEnd, FIELD(ClientSocketUn, String_t, path),
         FIELD(ClientSocketUn, sockaddr_un, addr));
CONSISTS(ServerSocketIn, kServerEnd, FIELD(ServerSocketIn, SockIO::SockAddr, addr),
         FIELD(ServerSocketIn, int, last_port));
CONSISTS(ServerSocketUn, kServerEnd, FIELD(ServerSocketUn, String_t, path),
         FIELD(ServerSocketUn, sockaddr_un, addr));
BEGINS(SockStream, kTable, FIELD(SockStream, unsigned, status), FIELD(SockStream, unsigned, mask),
       FIELD(SockStream, unsigned, timeout), FIELD(SockStream, int, fd));
using Bytes = Buffer<char>;
CONSISTS(Bytes, kTable, FIELD(Bytes, char*, base), FIELD(Bytes, char*, end),
         FIELD(Bytes, char*, cur), FIELD(Bytes, unsigned, size), FIELD(Bytes, int, external));
using Block = char[8192];
BEGINS(OSockStream, sizeof(Bytes), FIELD(OSockStream, Block, data),
       FIELD(OSockStream, int, pcount));
BEGINS(ISockStream, sizeof(Bytes), FIELD(ISockStream, Block, data),
       FIELD(ISockStream, OSockStream*, tie), FIELD(ISockStream, int, gcount));
BEGINS(OStrBinStream, FIELD(OSockStream, int, pcount).End(), FIELD(OStrBinStream, char*, mem),
       FIELD(OStrBinStream, char*, wp), FIELD(OStrBinStream, unsigned, capacity),
       FIELD(OStrBinStream, int, external));
BEGINS(IStrBinStream, FIELD(ISockStream, int, gcount).End(),
       FIELD(IStrBinStream, char const*, start), FIELD(IStrBinStream, char const*, rp),
       FIELD(IStrBinStream, char const*, stop));

// Geometry: every coordinate has 32 bits.
#define COORDINATE(Class, member) FIELD(Class, std::int32_t, member)
static_assert(sizeof(gu_point_t) == 8 && sizeof(gu_PathType_t) == 2);
CONSISTS(gu_point_t, 0, COORDINATE(gu_point_t, x), COORDINATE(gu_point_t, y));
CONSISTS(gu_rect_t, 0, COORDINATE(gu_rect_t, x1), COORDINATE(gu_rect_t, y1),
         COORDINATE(gu_rect_t, x2), COORDINATE(gu_rect_t, y2));
CONSISTS(gu_trapezoid_t, 0, COORDINATE(gu_trapezoid_t, x_bl), COORDINATE(gu_trapezoid_t, x_tl),
         COORDINATE(gu_trapezoid_t, x_tr), COORDINATE(gu_trapezoid_t, x_br),
         COORDINATE(gu_trapezoid_t, y_b), COORDINATE(gu_trapezoid_t, y_t));
CONSISTS(Edge_t, 0, COORDINATE(Edge_t, x0), COORDINATE(Edge_t, y0), COORDINATE(Edge_t, x1),
         COORDINATE(Edge_t, y1));
CONSISTS(OEdge_t, 0, COORDINATE(OEdge_t, y0), COORDINATE(OEdge_t, y1), COORDINATE(OEdge_t, x));
CONSISTS(ctree_node_t, kAVLnodeEnd, COORDINATE(ctree_node_t, y));
CONSISTS(octree_node_t, kAVLnodeEnd, COORDINATE(octree_node_t, y));

// The place of a virtual function in its table, counted from 0; -1 when it is not virtual. A
// pointer to such a member is its offset in the table, marked by the lowest bit, on ARM by the
// lowest bit of the second word.
template <class Member>
int SlotOf(Member member) {
    std::uintptr_t words[2];
    static_assert(sizeof member == sizeof words);
    std::memcpy(words, &member, sizeof words);
    if (((words[0] | words[1]) & 1) == 0) return -1;
    return static_cast<int>(words[0] / sizeof(void*));
}

#define SLOT(Class, function, want) \
    { #Class "::" #function, SlotOf(&Class::function), want }

TEST(Interface, VirtualFunctionsKeepTheirPlaces) {
    using Action = TMapAction<String_t, int, GStringCmp>;
    using SockIO::SockAddrRep;
    struct {
        char const* function;
        int slot, want;
    } const rows[] = {
        SLOT(Except, ToString, 0),
        SLOT(TVarrCmp<int>, operator(), 0),
        SLOT(TVarrRange<int>, Lower, 0),
        SLOT(TVarrRange<int>, Upper, 1),
        SLOT(TVarrRange<int>, Action, 2),
        SLOT(olist_cmpo_t, operator(), 0),
        SLOT(olist_actiono_t, operator(), 0),
        SLOT(Action, operator(), 0),
        SLOT(ObjectBase, IsA, 2),  // behind the two destructors
        SLOT(bnode_t, Dup, 0),
        SLOT(ctree_node_t, Dup, 0),
        SLOT(octree_node_t, Dup, 0),
        SLOT(SockAddrRep, Clone, 2),
        SLOT(SockAddrRep, Addr, 3),
        SLOT(SockAddrRep, AddrSize, 4),
        SLOT(SockAddrRep, SetPort, 5),
        SLOT(SockAddrRep, GetPort, 6),
        SLOT(SockAddrRep, IpAddr, 7),
        SLOT(SockAddrRep, Hostname, 8),
        SLOT(SockAddrRep, Family, 9),
        SLOT(ClientSocketBase, RefString, 0),
        SLOT(ClientSocketBase, Connect, 1),
        SLOT(ServerSocketBase, RefString, 0),
        SLOT(ServerSocketBase, Listen, 1),
        {"Accept()", SlotOf<int (ServerSocketBase::*)()>(&ServerSocketBase::Accept), 2},
        {"Accept(seconds)", SlotOf<int (ServerSocketBase::*)(unsigned)>(&ServerSocketBase::Accept),
         3},
        SLOT(ServerSocketBase, Close, 4),
        SLOT(SockStream, Bind, 0),
        SLOT(SockStream, Unbind, 1),
        SLOT(OutputBuffer<char>, Flush, 2),
        SLOT(OutputBuffer<char>, PutByte, 3),
        SLOT(InputBuffer<char>, Fill, 2),
        SLOT(InputBuffer<char>, GetByte, 3)};
    for (auto const& row : rows) EXPECT_EQ(row.want, row.slot) << row.function;
}

}  // namespace
