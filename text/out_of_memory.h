// The exit that everything takes whose allocation failed and who has no caller to tell.
#ifndef KORBASE_TEXT_OUT_OF_MEMORY_H
#define KORBASE_TEXT_OUT_OF_MEMORY_H

namespace korbase_detail {

// Prints "out of memory" to standard error and aborts.
[[noreturn]] void OutOfMemory();

}  // namespace korbase_detail

#endif
