/* RpcDecomposeHostName: the host and the port of an older kind of text. New code reads
 * "net/refstring.h" ones. */
#ifndef KORBASE_NET_RPCHOST_H
#define KORBASE_NET_RPCHOST_H

#include <korbase_api.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Splits "HOST" or "HOST:PORT" at the first ":" into the `size` bytes at `host`, cut to what fits
 * with its terminator, and *port, which is 0 without a port. Nothing before the ":", or an empty or
 * null text, gives "localhost". A `size` of 0 leaves `host` alone. Returns `host`.
 *
 * Kept: the port is read as a number with a sign and wraps at 16 bits: -1 gives 65535, 70000 gives
 * 4464. Keeps no state: any thread may call it. */
KORBASE_API char* RpcDecomposeHostName(char const* text, char* host, unsigned int size,
                                       unsigned short* port);

#ifdef __cplusplus
}
#endif

#endif
