/* A shared library that the tests load: it counts its end where `on_unload` points. */
int* on_unload;

__attribute__((destructor)) static void count_end(void) {
    if (on_unload) ++*on_unload;
}
