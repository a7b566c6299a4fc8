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

add_library(okt_warnings INTERFACE)
target_compile_options(okt_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
# Vector types lose their attributes as template arguments, which is meant here.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(okt_warnings INTERFACE -Wno-ignored-attributes)
endif()
