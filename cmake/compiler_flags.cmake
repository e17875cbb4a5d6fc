# kvn_flags: the flags of all our own translation units. Include paths start at the root of the tree.
add_library(kvn_flags INTERFACE)
target_include_directories(kvn_flags INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(kvn_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wold-style-cast -Werror)

if(WIN32)
  # The module uses nothing newer than Windows Vista.
  target_compile_definitions(kvn_flags INTERFACE UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0600)
  add_compile_options(-ffunction-sections -fdata-sections)
  add_link_options(-Wl,--gc-sections -Wl,--high-entropy-va -Wl,--nxcompat -Wl,--dynamicbase)
endif()

if(KVN_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()

if(KVN_FUZZ)
  # The fuzzer's instrumentation is in every file, TinyXML's included. Only clang counts sign conversions as part of
  # -Wconversion.
  add_compile_options(-fsanitize=fuzzer-no-link -O1 -Wno-sign-conversion)
endif()

if(KVN_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()
