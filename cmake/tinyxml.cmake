# TinyXML 2.6.2 from the sources that scripts/fetch-tinyxml unpacks; without its stream classes.
set(KVN_TINYXML_DIR ${CMAKE_SOURCE_DIR}/build/third_party/tinyxml CACHE PATH "TinyXML's sources")
if(NOT EXISTS ${KVN_TINYXML_DIR}/tinyxml.h)
  message(FATAL_ERROR "TinyXML is missing: run scripts/setup first")
endif()
add_library(tinyxml STATIC
  ${KVN_TINYXML_DIR}/tinystr.cpp
  ${KVN_TINYXML_DIR}/tinyxml.cpp
  ${KVN_TINYXML_DIR}/tinyxmlerror.cpp
  ${KVN_TINYXML_DIR}/tinyxmlparser.cpp)
target_include_directories(tinyxml SYSTEM PUBLIC ${KVN_TINYXML_DIR})
target_compile_options(tinyxml PRIVATE $<$<CONFIG:Release>:-O2>)
if(WIN32)
  # Use Windows' printf and scanf; mingw's would be linked in, with all its floating-point code.
  target_compile_definitions(tinyxml PRIVATE __USE_MINGW_ANSI_STDIO=0)
endif()
