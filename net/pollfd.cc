#include "net/pollfd.h"

template class TVarr<SockIO::PollFd>;
template class TSortedVector<SockIO::PollFd, SockIO::PollFd::Compare>;
