# Compiler options that all our own targets share; nothing here reaches programs that link the library.
add_library(korbase_build_options INTERFACE)
target_compile_options(korbase_build_options INTERFACE
    -Wall -Wextra -Wpedantic
    # A fused multiply-add happens where the code says std::fma and nowhere else: both targets give the same digits.
    $<$<COMPILE_LANGUAGE:C,CXX>:-ffp-contract=off>
    # Assertions name files as in the tree, wherever it was built.
    $<$<COMPILE_LANGUAGE:C,CXX>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=>)
if(KORBASE_WERROR)
    target_compile_options(korbase_build_options INTERFACE -Werror)
endif()

# The sanitizers' own build type: fast enough to run, quick to compile, with lines in the reports.
set(CMAKE_C_FLAGS_SANITIZE "-O1 -g1")
set(CMAKE_CXX_FLAGS_SANITIZE "-O1 -g1")
set(CMAKE_Fortran_FLAGS_SANITIZE "-O1 -g1")

if(KORBASE_SANITIZE)
    add_compile_options(-fsanitize=${KORBASE_SANITIZE} -fno-sanitize-recover=all
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${KORBASE_SANITIZE})
    # The instrumented code hides initialisations from GCC, which then warns inside <regex>.
    target_compile_options(korbase_build_options INTERFACE
                           $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()

# What makes faults in the shipped library harder to exploit: guarded stack arrays, checked buffer functions
# (they need the optimiser), and nothing writable left where calls are dispatched.
add_library(korbase_hardening INTERFACE)
if(NOT KORBASE_SANITIZE)
    set(korbase_optimised $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
    target_compile_options(korbase_hardening INTERFACE
        -fstack-protector-strong $<${korbase_optimised}:-U_FORTIFY_SOURCE> $<${korbase_optimised}:-D_FORTIFY_SOURCE=2>)
    target_link_options(korbase_hardening INTERFACE LINKER:-z,relro,-z,now,-z,noexecstack)
endif()

# ccache where it is installed: several presets compile the same sources.
find_program(KORBASE_CCACHE ccache)
mark_as_advanced(KORBASE_CCACHE)
if(KORBASE_CCACHE AND PROJECT_IS_TOP_LEVEL)
    set(CMAKE_C_COMPILER_LAUNCHER ${KORBASE_CCACHE})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${KORBASE_CCACHE})
endif()
