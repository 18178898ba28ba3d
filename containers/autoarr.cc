#include "generic/autoarr"

template class AutoArr<char>;
