/* KORBASE_API marks what the shared library exports; everything else stays hidden. C11 and C++17.
 */
#ifndef KORBASE_API_H
#define KORBASE_API_H

#define KORBASE_API __attribute__((visibility("default")))

#endif
