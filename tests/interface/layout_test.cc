// The documented data members: their types, their order and, where nothing may follow, the size
// they add up to. Programs hold these objects by value, and debuggers and other languages read
// them: a change is a new interface. Private members that more may follow are nobody else's.
//
// This file is compiled without access control, which is how it sees protected and private members.
#include <gtest/gtest.h>
#include <korbase.h>

#include <cstring>
#include <initializer_list>

// Classes with virtual functions are no standard-layout types; the compilers that we support still
// know where their members stand.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

namespace {

// A data member of a class, a base class, or the end.
struct Field {
    bool typed;
    std::size_t at, size, align;
};

// Whether fields follow each other with no more between them than the platform's alignment needs.
constexpr bool Follow(std::initializer_list<Field> fields) {
    std::size_t end = 0;
    for (Field const& f : fields) {
        if (!f.typed || f.at - end >= f.align) return false;  // before the end: a huge number
        end = f.at + f.size;
    }
    return true;
}

#define F(Type, m) \
    Field { std::is_same_v<decltype(C::m), Type>, offsetof(C, m), sizeof(Type), alignof(Type) }
// The class begins with these fields; or it consists of them.
#define BEGINS(Class, ...)                \
    static_assert(                        \
        [] {                              \
            using C = Class;              \
            return Follow({__VA_ARGS__}); \
        }(),                              \
        #Class)
#define CONSISTS(Class, ...) BEGINS(Class, __VA_ARGS__, Field{true, sizeof(C), 0, alignof(C)})

// A base class, up to a member if its padding is used; the pointer to the virtual functions.
template <class T>
constexpr Field kBase = {true, 0, sizeof(T), alignof(T)};
constexpr Field kTable = kBase<void*>;
#define UP_TO(Base, m) \
    Field { true, 0, offsetof(Base, m) + sizeof(Base::m), alignof(Base) }

template <class... Classes>
constexpr bool kPointers = ((sizeof(Classes) == sizeof(void*)) && ...);

// Text.
CONSISTS(Except, kTable, F(char const*, kind), F(String_t, message), F(String_t, file),
         F(int, line));
CONSISTS(String_t::Srep, F(char*, text), F(unsigned, count));
CONSISTS(ByteString::Srep, F(char*, data), F(unsigned, length), F(unsigned, count));
CONSISTS(str_arr_t, F(char*, buffer), F(char*, end), F(std::int32_t, capacity));
using StringMap = TMap<String_t, String_t, GStringCmp>;

// Arrays and lists.
using Ints = TVarr<int>;
BEGINS(Ints, F(int*, arr), F(int*, arrp), F(unsigned, size), F(unsigned, incr), F(VarrTypeT, type));
CONSISTS(TResult<int>, F(int*, ptr), F(int, found));
CONSISTS(varr_t, F(std::int32_t, type), F(std::int32_t, elemSize), F(std::int32_t, capacity),
         F(std::int32_t, incr), F(char*, wp), F(char*, base));
CONSISTS(TVector<double>, F(double*, m), F(int, rows));
CONSISTS(olink_t, kTable, F(olink_t*, next));
CONSISTS(slink_t, F(slink_t*, next), F(void*, data));
CONSISTS(DLink, kTable, F(DLink*, next), F(DLink*, prev));
CONSISTS(DPLink, F(DPLink*, next), F(DPLink*, prev), F(void*, data));
using Link = TOLink<String_t>;
CONSISTS(Link, kBase<olink_t>, F(String_t, value));
CONSISTS(TOListIterator<String_t>, F(TOList<String_t> const*, list), F(Link*, cur), F(Link*, stop));

// Tables, trees and sets. What derives from a node starts behind its balance.
CONSISTS(StrCnt, F(String_t, str), F(std::int32_t, cnt));
CONSISTS(StrStrMap, F(String_t, key), F(String_t, value));
CONSISTS(bnode_t, kTable, F(bnode_t*, parent), F(bnode_t*, left), F(bnode_t*, right));
CONSISTS(AVLnode, kBase<bnode_t>, F(int, bal));
using Node = TMapNode<String_t, String_t, GStringCmp>;
BEGINS(Node, UP_TO(AVLnode, bal), F(String_t, key), F(String_t, value));
using Data = TMapData<String_t, String_t, GStringCmp>;
CONSISTS(Data, F(String_t const*, keyp), F(String_t const*, valuep), F(String_t*, result),
         F(String_t*, existing));
CONSISTS(StringMap::Iterator, F(StringMap*, map), F(Node*, cur));
using Pair = TPair<char, double>;
CONSISTS(Pair, F(char, first), F(double, second));
CONSISTS(Setiterator, F(unsigned, pos), F(unsigned, limit), F(set_word_t const*, bits),
         F(unsigned, num));

// Services of the operating system, and networking.
CONSISTS(Process, F(int, pid), F(int, status));
CONSISTS(pstream_base, F(int[2], fds), F(Process, child));
CONSISTS(RandName, F(char const*, alphabet), F(std::uint32_t, length), F(std::uint32_t, state));
CONSISTS(TempFile, F(Pathname, path), F(int, fd));
using namespace SockIO;
CONSISTS(BaseException, UP_TO(Except, line), F(int, code));
CONSISTS(SockAddr, F(String_t, host), F(std::unique_ptr<SockAddrRep>, rep), F(int, family),
         F(unsigned short, port));
CONSISTS(SockAddrIn4, kTable, F(sockaddr_in, addr));
CONSISTS(SockAddrIn6, kTable, F(sockaddr_in6, addr));
CONSISTS(SockAddrUn, kTable, F(sockaddr_un, addr));
CONSISTS(ClientSocketBase, kTable, F(int, fd));
BEGINS(ServerSocketBase, kTable, F(int, fd));
CONSISTS(ClientSocketIn, UP_TO(ClientSocketBase, fd), F(SockAddr, remote), F(SockAddr, local));
CONSISTS(ClientSocketUn, UP_TO(ClientSocketBase, fd), F(String_t, path), F(sockaddr_un, addr));
CONSISTS(ServerSocketIn, UP_TO(ServerSocketBase, fd), F(SockAddr, addr), F(int, last_port));
CONSISTS(ServerSocketUn, UP_TO(ServerSocketBase, fd), F(String_t, path), F(sockaddr_un, addr));
using Bytes = Buffer<char>;
CONSISTS(Bytes, kTable, F(char*, base), F(char*, end), F(char*, cur), F(unsigned, size),
         F(int, external));

// Geometry.
using Coord = gu_coord_t;
CONSISTS(gu_point_t, F(Coord, x), F(Coord, y));
CONSISTS(gu_rect_t, F(Coord, x1), F(Coord, y1), F(Coord, x2), F(Coord, y2));
CONSISTS(gu_trapezoid_t, F(Coord, x_bl), F(Coord, x_tl), F(Coord, x_tr), F(Coord, x_br),
         F(Coord, y_b), F(Coord, y_t));
CONSISTS(Edge_t, F(Coord, x0), F(Coord, y0), F(Coord, x1), F(Coord, y1));
CONSISTS(OEdge_t, F(Coord, y0), F(Coord, y1), F(Coord, x));
CONSISTS(ctree_node_t, UP_TO(AVLnode, bal), F(Coord, y));
CONSISTS(octree_node_t, UP_TO(AVLnode, bal), F(Coord, y));

// One pointer; one object of another class; a number of so many bits.
static_assert(kPointers<String_t, ByteString, Pathname, Process::Arg, TmpFile, TempDir, ShlHandle>);
static_assert(kPointers<TVarrCmp<int>, TVarrRange<int>, olist_cmpo_t, olist_actiono_t, ObjectBase>);
static_assert(kPointers<olist_t, TOList<int>, slist_t, DList, DPList, AutoArr<char>, StringMap>);
static_assert(kPointers<TabStr, SockAddrRep>);
static_assert(sizeof(TSortedVector<int, struct IntOrder>) == sizeof(Ints));
static_assert(sizeof(std::basic_fdfilebuf<char>) == sizeof(std::filebuf));
static_assert(sizeof(DateTime) == sizeof(std::time_t) && sizeof(PollFd) == sizeof(pollfd));
static_assert(sizeof(TimedOut) == sizeof(BaseException));
static_assert(VARR_ADD == 0 && VARR_DOUBLE == 1 && sizeof(VarrTypeT) == 4);
static_assert(sizeof(set_word_t) == 4 && sizeof(gu_PathType_t) == 2 && sizeof(gu_coord_t) == 4);

// The place of a virtual function in its table, counted from 0; -1 when it is not virtual. A
// pointer to such a member is its offset in the table, marked by the lowest bit, on ARM by the
// lowest bit of the second word.
template <class Member>
int SlotOf(Member member) {
    std::uintptr_t words[2];
    static_assert(sizeof member == sizeof words);
    std::memcpy(words, &member, sizeof words);
    return (words[0] | words[1]) & 1 ? static_cast<int>(words[0] / sizeof(void*)) : -1;
}

// Whether functions stand in this order in their table, the first of them at place `first`.
template <class... Members>
bool Stand(int first, Members... members) {
    return ((SlotOf(members) == first++) && ...);
}

TEST(Interface, VirtualFunctionsKeepTheirPlaces) {
    using Range = TVarrRange<int>;
    using Map = TMapAction<String_t, int, GStringCmp>;
    using Client = ClientSocketBase;
    using Server = ServerSocketBase;
    using Rep = SockAddrRep;
    int (Server::*const accept)() = &Server::Accept;
    int (Server::*const accept_within)(unsigned) = &Server::Accept;
    EXPECT_TRUE(Stand(0, &Except::ToString) && Stand(0, &TVarrCmp<int>::operator()) &&
                Stand(0, &olist_cmpo_t::operator()) && Stand(0, &olist_actiono_t::operator()) &&
                Stand(0, &Map::operator()) && Stand(0, &bnode_t::Dup) &&
                Stand(0, &ctree_node_t::Dup) && Stand(0, &octree_node_t::Dup));
    EXPECT_TRUE(Stand(0, &Range::Lower, &Range::Upper, &Range::Action));
    EXPECT_TRUE(Stand(0, &SockStream::Bind, &SockStream::Unbind));
    EXPECT_TRUE(Stand(0, &Client::RefString, &Client::Connect));
    EXPECT_TRUE(
        Stand(0, &Server::RefString, &Server::Listen, accept, accept_within, &Server::Close));
    // Behind the two destructors.
    EXPECT_TRUE(Stand(2, &ObjectBase::IsA));
    EXPECT_TRUE(Stand(2, &Rep::Clone, &Rep::Addr, &Rep::AddrSize, &Rep::SetPort, &Rep::GetPort,
                      &Rep::IpAddr, &Rep::Hostname, &Rep::Family));
    EXPECT_TRUE(Stand(2, &OutputBuffer<char>::Flush, &OutputBuffer<char>::PutByte) &&
                Stand(2, &InputBuffer<char>::Fill, &InputBuffer<char>::GetByte));
    // Overridden from a virtual base: with places of their own.
    EXPECT_TRUE(Stand(4, &OSockStream::Bind, &OSockStream::Unbind) &&
                Stand(4, &ISockStream::Bind, &ISockStream::Unbind));
}

}  // namespace
