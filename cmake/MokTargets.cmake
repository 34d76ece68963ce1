# How this project's targets are built. Nothing here reaches a user of the installed libraries.

include(GNUInstallDirs)

# What is installed goes with what programs are built by, unless it says that it belongs to the component runtime (the
# libraries), tools or documentation.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME development)

# What developers want to hear about; never exported.
add_library(mok_warnings INTERFACE)
target_compile_options(mok_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
                                              $<$<BOOL:${MOK_WERROR}>:-Werror>)

# The same bits from both compilers at every optimisation level: a product and a sum stay two roundings, whatever the
# processor could do in one. Headers hold arithmetic too, so that programs which compare with the libraries need it as well.
add_library(mok_arithmetic INTERFACE)
target_compile_options(mok_arithmetic INTERFACE -ffp-contract=off)

# mok_add_library(<target> <alias> PUBLIC_LIBRARIES ... SOURCES ... HEADERS ...): a shared library of the house.
# Headers keep their path from the root of the tree, where they stand and once installed.
function(mok_add_library target alias)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "SOURCES;HEADERS;PUBLIC_LIBRARIES")
  add_library(${target} SHARED)
  add_library(mok14::${alias} ALIAS ${target})
  target_sources(${target} PRIVATE ${arg_SOURCES}
                 PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${arg_HEADERS})
  target_compile_features(${target} PUBLIC cxx_std_17)
  target_link_libraries(${target} PUBLIC ${arg_PUBLIC_LIBRARIES}
                        PRIVATE $<BUILD_INTERFACE:mok_warnings> $<BUILD_INTERFACE:mok_arithmetic>)
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
                                              $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/mok14>)
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${alias}
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    INSTALL_RPATH "$ORIGIN"
    LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/exports.map
    VERIFY_INTERFACE_HEADER_SETS ${PROJECT_IS_TOP_LEVEL})
  target_link_options(${target} PRIVATE LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map)
  install(TARGETS ${target} EXPORT mokcntr14-targets
          LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
          FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/mok14)
endfunction()

# What is built on the libraries as a stranger would build on them.
function(mok_use_libraries target scope)
  target_link_libraries(${target} ${scope} mok14::cntr PRIVATE mok_warnings mok_arithmetic)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
endfunction()

# mok_add_program(<target> <source>...)
function(mok_add_program target)
  add_executable(${target} ${ARGN})
  mok_use_libraries(${target} PRIVATE)
endfunction()

# mok_add_program_library(<target> <source>...): a piece of a program, linked in and not installed.
function(mok_add_program_library target)
  add_library(${target} STATIC ${ARGN})
  mok_use_libraries(${target} PUBLIC)
endfunction()
