#include "generic/tmap"

template class TMapNode<String_t, String_t, GStringCmp>;
template class TMapNode<String_t, int, GStringCmp>;
template class TMapAction<String_t, String_t, GStringCmp>;
template class TMapAction<String_t, int, GStringCmp>;
template class TMap<String_t, String_t, GStringCmp>;
template class TMap<String_t, int, GStringCmp>;
