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
};

constexpr std::size_t Aligned(std::size_t n, std::size_t align) {
    return (n + align - 1) / align * align;
}

// Where the fields end, when they follow each other from `start` as the platform aligns them; else
// 0.
constexpr std::size_t EndOf(std::size_t start, std::initializer_list<Field> fields) {
    for (Field const& field : fields) {
        if (!field.typed || field.at != Aligned(start, field.align)) return 0;
        start = field.at + field.size;
    }
    return start;
}

#define FIELD(Type, member)                                                           \
    Field {                                                                           \
        std::is_same_v<decltype(C::member), Type>, offsetof(C, member), sizeof(Type), \
            alignof(Type)                                                             \
    }
// Where the fields of a class end, the first of them `start` bytes from its beginning.
#define END(Class, start, ...)              \
    [] {                                    \
        using C = Class;                    \
        return EndOf(start, {__VA_ARGS__}); \
    }()
// The class begins with these fields; or it consists of them.
#define BEGINS(Class, start, ...) static_assert(END(Class, start, __VA_ARGS__) != 0, #Class)
#define CONSISTS(Class, start, ...) \
    static_assert(Aligned(END(Class, start, __VA_ARGS__), alignof(Class)) == sizeof(Class), #Class)

#define BEHIND(Class, member) (offsetof(Class, member) + sizeof(Class::member))

constexpr std::size_t kTable = sizeof(void*);  // the pointer to the virtual functions

// Text.
CONSISTS(Except, kTable, FIELD(char const*, kind), FIELD(String_t, message), FIELD(String_t, file),
         FIELD(int, line));
CONSISTS(String_t, 0, FIELD(String_t::Srep*, rep));
CONSISTS(String_t::Srep, 0, FIELD(char*, text), FIELD(unsigned, count));
CONSISTS(ByteString, 0, FIELD(ByteString::Srep*, rep));
CONSISTS(ByteString::Srep, 0, FIELD(char*, data), FIELD(unsigned, length), FIELD(unsigned, count));
CONSISTS(str_arr_t, 0, FIELD(char*, buffer), FIELD(char*, end), FIELD(std::int32_t, capacity));
BEGINS(StringTok, 0, FIELD(String_t, text), FIELD(char*, cursor), FIELD(char, sep));
BEGINS(StringSplitter, 0, FIELD(String_t, text), FIELD(String_t, separators), FIELD(String_t, trim),
       FIELD(char*, start), FIELD(char*, end), FIELD(unsigned, step));
BEGINS(ArgumentVector, 0, FIELD(int, argc), FIELD(char**, argv));
using StringMap = TMap<String_t, String_t, GStringCmp>;
BEGINS(Vars, 0, FIELD(StringMap, vars), FIELD(char, marker));

// Arrays.
static_assert(VARR_ADD == 0 && VARR_DOUBLE == 1 && sizeof(VarrTypeT) == 4);
using Ints = TVarr<int>;
BEGINS(Ints, 0, FIELD(int*, arr), FIELD(int*, arrp), FIELD(unsigned, size), FIELD(unsigned, incr),
       FIELD(VarrTypeT, type));
struct IntOrder;
static_assert(sizeof(TSortedVector<int, IntOrder>) == sizeof(Ints));
static_assert(sizeof(TVarrCmp<int>) == kTable && sizeof(TVarrRange<int>) == kTable);
using Found = TResult<int>;
CONSISTS(Found, 0, FIELD(int*, ptr), FIELD(int, found));
CONSISTS(varr_t, 0, FIELD(std::int32_t, type), FIELD(std::int32_t, elemSize),
         FIELD(std::int32_t, capacity), FIELD(std::int32_t, incr), FIELD(char*, wp),
         FIELD(char*, base));
using Doubles = TVector<double>;
CONSISTS(Doubles, 0, FIELD(double*, m), FIELD(int, rows));
CONSISTS(AutoArr<char>, 0, FIELD(char*, arr));

// Pools and lists.
using Tag = char[4];
BEGINS(Pool, 0, FIELD(void*, freeList), FIELD(Pool::Chunk*, chunks), FIELD(pthread_mutex_t, mutex),
       FIELD(Tag, tag));
CONSISTS(olink_t, kTable, FIELD(olink_t*, next));
CONSISTS(olist_t, 0, FIELD(olink_t*, last));
static_assert(sizeof(olist_cmpo_t) == kTable && sizeof(olist_actiono_t) == kTable);
CONSISTS(slink_t, 0, FIELD(slink_t*, next), FIELD(void*, data));
CONSISTS(slist_t, 0, FIELD(slink_t*, last));
CONSISTS(DLink, kTable, FIELD(DLink*, next), FIELD(DLink*, prev));
CONSISTS(DList, 0, FIELD(DLink*, last));
BEGINS(DListIterator, 0, FIELD(DList*, list), FIELD(DLink*, cur));
CONSISTS(DPLink, 0, FIELD(DPLink*, next), FIELD(DPLink*, prev), FIELD(void*, data));
CONSISTS(DPList, 0, FIELD(DPLink*, last));
using StringLink = TOLink<String_t>;
CONSISTS(StringLink, sizeof(olink_t), FIELD(String_t, value));
static_assert(sizeof(TOList<String_t>) == sizeof(olist_t));
using StringListIterator = TOListIterator<String_t>;
CONSISTS(StringListIterator, 0, FIELD(TOList<String_t> const*, list), FIELD(StringLink*, cur),
         FIELD(StringLink*, stop));
static_assert(sizeof(ObjectBase) == kTable);

// Hash tables. Their arrays are owned by std::unique_ptr, which is one pointer.
CONSISTS(StrCnt, 0, FIELD(String_t, str), FIELD(std::int32_t, cnt));
CONSISTS(StrStrMap, 0, FIELD(String_t, key), FIELD(String_t, value));
CONSISTS(TabStr, 0, FIELD(String_t, str));
using Counts = OHashTable<String_t, StrCnt>;
BEGINS(Counts, 0, FIELD(unsigned, size), FIELD(unsigned, card),
       FIELD(std::unique_ptr<std::uint8_t[]>, state), FIELD(std::unique_ptr<StrCnt[]>, slots));
static_assert(sizeof(Counts::state) == sizeof(void*) && sizeof(Counts::slots) == sizeof(void*));
using CountsIterator = OHashIterator<String_t, StrCnt>;
BEGINS(CountsIterator, 0, FIELD(Counts*, table), FIELD(std::int32_t, pos));

// Trees and maps.
CONSISTS(bnode_t, kTable, FIELD(bnode_t*, parent), FIELD(bnode_t*, left), FIELD(bnode_t*, right));
CONSISTS(AVLnode, sizeof(bnode_t), FIELD(int, bal));
constexpr std::size_t kAVLnodeEnd = BEHIND(AVLnode, bal);  // what derives starts here
using StringNode = TMapNode<String_t, String_t, GStringCmp>;
BEGINS(StringNode, kAVLnodeEnd, FIELD(String_t, key), FIELD(String_t, value));
using StringData = TMapData<String_t, String_t, GStringCmp>;
CONSISTS(StringData, 0, FIELD(String_t const*, keyp), FIELD(String_t const*, valuep),
         FIELD(String_t*, result), FIELD(String_t*, existing));
CONSISTS(StringMap, 0, FIELD(StringNode*, root));
using MapStep = StringMap::Iterator;
CONSISTS(MapStep, 0, FIELD(StringMap*, map), FIELD(StringNode*, cur));
using Pair = TPair<char, double>;
CONSISTS(Pair, 0, FIELD(char, first), FIELD(double, second));

// Bit sets.
static_assert(sizeof(set_word_t) == 4);
BEGINS(Set, 0, FIELD(unsigned, fixed), FIELD(unsigned, num), FIELD(set_word_t*, bits));
CONSISTS(Setiterator, 0, FIELD(unsigned, pos), FIELD(unsigned, limit),
         FIELD(set_word_t const*, bits), FIELD(unsigned, num));

// Services of the operating system.
CONSISTS(Process, 0, FIELD(int, pid), FIELD(int, status));
CONSISTS(Process::Arg, 0, FIELD(String_t, text));
static_assert(sizeof(std::basic_fdfilebuf<char>) == sizeof(std::filebuf));
using Pipe = int[2];
CONSISTS(pstream_base, 0, FIELD(Pipe, fds), FIELD(Process, child));
static_assert(sizeof(Pathname) == sizeof(String_t));
CONSISTS(RandName, 0, FIELD(char const*, alphabet), FIELD(std::uint32_t, length),
         FIELD(std::uint32_t, state));
CONSISTS(TmpFile, 0, FIELD(String_t, name));
CONSISTS(TempFile, 0, FIELD(Pathname, path), FIELD(int, fd));
CONSISTS(TempDir, 0, FIELD(Pathname, path));
CONSISTS(DateTime, 0, FIELD(std::time_t, seconds));
CONSISTS(ShlHandle, 0, FIELD(shl_t, handle));

// Networking. The mask of a stream's own exceptions stands where the documents put it, under
// another name.
CONSISTS(SockIO::BaseException, BEHIND(Except, line), FIELD(int, code));
static_assert(sizeof(SockIO::TimedOut) == sizeof(SockIO::BaseException));
CONSISTS(SockIO::SockAddr, 0, FIELD(String_t, host),
         FIELD(std::unique_ptr<SockIO::SockAddrRep>, rep), FIELD(int, family),
         FIELD(unsigned short, port));
static_assert(sizeof(SockIO::SockAddr::rep) == sizeof(void*) &&
              sizeof(SockIO::SockAddrRep) == kTable);
CONSISTS(SockIO::SockAddrIn4, kTable, FIELD(sockaddr_in, addr));
CONSISTS(SockIO::SockAddrIn6, kTable, FIELD(sockaddr_in6, addr));
CONSISTS(SockIO::SockAddrUn, kTable, FIELD(sockaddr_un, addr));
static_assert(sizeof(SockIO::PollFd) == sizeof(pollfd));
CONSISTS(ClientSocketBase, kTable, FIELD(int, fd));
BEGINS(ServerSocketBase, kTable, FIELD(int, fd));
CONSISTS(ClientSocketIn, BEHIND(ClientSocketBase, fd), FIELD(SockIO::SockAddr, remote),
         FIELD(SockIO::SockAddr, local));
CONSISTS(ClientSocketUn, BEHIND(ClientSocketBase, fd), FIELD(String_t, path),
         FIELD(sockaddr_un, addr));
CONSISTS(ServerSocketIn, BEHIND(ServerSocketBase, fd), FIELD(SockIO::SockAddr, addr),
         FIELD(int, last_port));
CONSISTS(ServerSocketUn, BEHIND(ServerSocketBase, fd), FIELD(String_t, path),
         FIELD(sockaddr_un, addr));
BEGINS(SockStream, kTable, FIELD(unsigned, status), FIELD(unsigned, mask), FIELD(unsigned, timeout),
       FIELD(int, fd));
using Bytes = Buffer<char>;
CONSISTS(Bytes, kTable, FIELD(char*, base), FIELD(char*, end), FIELD(char*, cur),
         FIELD(unsigned, size), FIELD(int, external));
using Block = char[8192];
BEGINS(OSockStream, sizeof(Bytes), FIELD(Block, data), FIELD(int, pcount));
BEGINS(ISockStream, sizeof(Bytes), FIELD(Block, data), FIELD(OSockStream*, tie),
       FIELD(int, gcount));
BEGINS(OStrBinStream, BEHIND(OSockStream, pcount), FIELD(char*, mem), FIELD(char*, wp),
       FIELD(unsigned, capacity), FIELD(int, external));
BEGINS(IStrBinStream, BEHIND(ISockStream, gcount), FIELD(char const*, start),
       FIELD(char const*, rp), FIELD(char const*, stop));

// Geometry: every coordinate has 32 bits.
#define COORDINATE(member) FIELD(std::int32_t, member)
static_assert(sizeof(gu_point_t) == 8 && sizeof(gu_PathType_t) == 2);
CONSISTS(gu_point_t, 0, COORDINATE(x), COORDINATE(y));
CONSISTS(gu_rect_t, 0, COORDINATE(x1), COORDINATE(y1), COORDINATE(x2), COORDINATE(y2));
CONSISTS(gu_trapezoid_t, 0, COORDINATE(x_bl), COORDINATE(x_tl), COORDINATE(x_tr), COORDINATE(x_br),
         COORDINATE(y_b), COORDINATE(y_t));
CONSISTS(Edge_t, 0, COORDINATE(x0), COORDINATE(y0), COORDINATE(x1), COORDINATE(y1));
CONSISTS(OEdge_t, 0, COORDINATE(y0), COORDINATE(y1), COORDINATE(x));
CONSISTS(ctree_node_t, kAVLnodeEnd, COORDINATE(y));
CONSISTS(octree_node_t, kAVLnodeEnd, COORDINATE(y));

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

// Whether functions stand in this order in their table, the first of them at place `first`.
template <class... Members>
bool Follow(int first, Members... members) {
    return ((SlotOf(members) == first++) && ...);
}

TEST(Interface, VirtualFunctionsKeepTheirPlaces) {
    using Range = TVarrRange<int>;
    using Action = TMapAction<String_t, int, GStringCmp>;
    using Rep = SockIO::SockAddrRep;
    using Server = ServerSocketBase;
    EXPECT_TRUE(Follow(0, &Except::ToString) && Follow(0, &TVarrCmp<int>::operator()));
    EXPECT_TRUE(Follow(0, &olist_cmpo_t::operator()) && Follow(0, &olist_actiono_t::operator()));
    EXPECT_TRUE(Follow(0, &Action::operator()) && Follow(0, &bnode_t::Dup));
    EXPECT_TRUE(Follow(0, &ctree_node_t::Dup) && Follow(0, &octree_node_t::Dup));
    EXPECT_TRUE(Follow(0, &Range::Lower, &Range::Upper, &Range::Action));
    EXPECT_TRUE(Follow(0, &ClientSocketBase::RefString, &ClientSocketBase::Connect));
    EXPECT_TRUE(Follow(0, &Server::RefString, &Server::Listen,
                       static_cast<int (Server::*)()>(&Server::Accept),
                       static_cast<int (Server::*)(unsigned)>(&Server::Accept), &Server::Close));
    EXPECT_TRUE(Follow(0, &SockStream::Bind, &SockStream::Unbind));
    // Behind the two destructors.
    EXPECT_TRUE(Follow(2, &ObjectBase::IsA));
    EXPECT_TRUE(Follow(2, &Rep::Clone, &Rep::Addr, &Rep::AddrSize, &Rep::SetPort, &Rep::GetPort,
                       &Rep::IpAddr, &Rep::Hostname, &Rep::Family));
    EXPECT_TRUE(Follow(2, &OutputBuffer<char>::Flush, &OutputBuffer<char>::PutByte));
    EXPECT_TRUE(Follow(2, &InputBuffer<char>::Fill, &InputBuffer<char>::GetByte));
    // Overridden from a virtual base: with places of their own.
    EXPECT_TRUE(Follow(4, &OSockStream::Bind, &OSockStream::Unbind));
    EXPECT_TRUE(Follow(4, &ISockStream::Bind, &ISockStream::Unbind));
}

}  // namespace
