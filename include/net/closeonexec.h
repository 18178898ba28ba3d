// Descriptors that programs started by this one do not inherit.
#ifndef KORBASE_NET_CLOSEONEXEC_H
#define KORBASE_NET_CLOSEONEXEC_H

#include <korbase_api.h>

namespace SockIO {

// Closes `fd` when this process, or a child that inherited it, runs another program. Returns 0 or
// the errno value. Any thread may call it. Kept: the other descriptor flags are not preserved.
KORBASE_API int SetCloseOnExec(int fd);
KORBASE_API int setCloseOnExec(int fd);

}  // namespace SockIO

#endif
