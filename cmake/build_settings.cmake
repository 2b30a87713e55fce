# Language level, warnings and instrumentation that every target of the project shares.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

# bin/ and lib/ may be moved together: programs find the shared objects relative to themselves.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

set(THREADS_PREFER_PTHREAD_FLAG ON)
find_package(Threads REQUIRED)

if(QUORVELIN_SANITIZE)
  add_compile_options(-fsanitize=${QUORVELIN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${QUORVELIN_SANITIZE})
endif()
if(QUORVELIN_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()
if(QUORVELIN_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Warnings for all code of the project. -ffp-contract=off: results must not depend on whether the machine can fuse
# a multiplication and an addition.
function(quorvelin_settings target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror -ffp-contract=off)
endfunction()

# The engine throws nothing and shows nothing: the module exports one function.
function(quorvelin_engine_settings target)
  target_compile_options(${target} PRIVATE -fno-exceptions)
  set_target_properties(${target} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
endfunction()
