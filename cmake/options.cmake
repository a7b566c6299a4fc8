# Flags of everything that computes: one written operation is one rounding, flags and signalling NaNs are honoured, and
# control registers may be changed at run time.
add_library(okt_exact INTERFACE)
target_compile_features(okt_exact INTERFACE cxx_std_20)
target_compile_options(okt_exact INTERFACE -mfpmath=sse -ffp-contract=off -frounding-math -ftrapping-math
  -fno-math-errno)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(okt_exact INTERFACE -fsignaling-nans)
else()
  target_compile_options(okt_exact INTERFACE -ffp-exception-behavior=strict)
endif()

# Where approximate reciprocals and reciprocal roots come from, see src/lanes/seeds.h.
set(OKT_SEEDS processor CACHE STRING "Start values of divisions and roots: processor, table or moved (for tests)")
set_property(CACHE OKT_SEEDS PROPERTY STRINGS processor table moved)
if(OKT_SEEDS STREQUAL "table" OR OKT_SEEDS STREQUAL "moved")
  string(TOUPPER ${OKT_SEEDS} okt_seeds)
  target_compile_definitions(okt_exact INTERFACE OKT_SEEDS_${okt_seeds})
elseif(NOT OKT_SEEDS STREQUAL "processor")
  message(FATAL_ERROR "OKT_SEEDS is ${OKT_SEEDS}, but has to be processor, table or moved")
endif()

# The instruction sets of the levels: what every processor has, 256-bit registers, 512-bit registers.
add_library(okt_sse2 INTERFACE)
target_compile_options(okt_sse2 INTERFACE -msse2 -mno-avx)
add_library(okt_arithmetic INTERFACE)
target_link_libraries(okt_arithmetic INTERFACE okt_exact okt_sse2)
add_library(okt_v3 INTERFACE)
target_compile_options(okt_v3 INTERFACE -march=x86-64-v3 -mtune=generic)
add_library(okt_v4 INTERFACE)
target_compile_options(okt_v4 INTERFACE -march=x86-64-v4 -mtune=generic)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # The compiler's own headers of 512-bit operations begin with values that they leave open.
  target_compile_options(okt_v4 INTERFACE -Wno-uninitialized -Wno-maybe-uninitialized)
endif()
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  set(OKT_LEVELS v3 v4 CACHE STRING "Levels of the library that are built besides the one for every x86-64 processor")
else()
  set(OKT_LEVELS "" CACHE STRING "Only Linux has a loader that chooses")
endif()

add_library(okt_warnings INTERFACE)
target_compile_options(okt_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
# Vector types lose their attributes as template arguments, which is meant here.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(okt_warnings INTERFACE -Wno-ignored-attributes)
endif()
