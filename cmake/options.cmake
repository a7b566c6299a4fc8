# Flags of everything that computes: one written operation is one rounding, flags and signalling NaNs are honoured, and
# control registers may be changed at run time.
add_library(okt_arithmetic INTERFACE)
target_compile_features(okt_arithmetic INTERFACE cxx_std_20)
target_compile_options(okt_arithmetic INTERFACE -msse2 -mfpmath=sse -mno-avx -ffp-contract=off -frounding-math -ftrapping-math
  -fno-math-errno)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(okt_arithmetic INTERFACE -fsignaling-nans)
else()
  target_compile_options(okt_arithmetic INTERFACE -ffp-exception-behavior=strict)
endif()

# Where approximate reciprocals and reciprocal roots come from, see src/lanes/seeds.h.
set(OKT_SEEDS processor CACHE STRING "Start values of divisions and roots: processor, table or moved (for tests)")
set_property(CACHE OKT_SEEDS PROPERTY STRINGS processor table moved)
if(OKT_SEEDS STREQUAL "table" OR OKT_SEEDS STREQUAL "moved")
  string(TOUPPER ${OKT_SEEDS} okt_seeds)
  target_compile_definitions(okt_arithmetic INTERFACE OKT_SEEDS_${okt_seeds})
elseif(NOT OKT_SEEDS STREQUAL "processor")
  message(FATAL_ERROR "OKT_SEEDS is ${OKT_SEEDS}, but has to be processor, table or moved")
endif()

add_library(okt_warnings INTERFACE)
target_compile_options(okt_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
# Vector types lose their attributes as template arguments, which is meant here.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(okt_warnings INTERFACE -Wno-ignored-attributes)
endif()
