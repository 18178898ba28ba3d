#include "net/buffer.h"

template class Buffer<char>;
template class OutputBuffer<char>;
template class InputBuffer<char>;
