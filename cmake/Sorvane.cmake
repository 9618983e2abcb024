# Shared build rules: static C++ runtime, Boost headers, manifests, the Wine test runner.

enable_testing()

# Only boost/ of the host's headers is visible to the cross compiler.
set(SORVANE_BOOST_ROOT ${CMAKE_BINARY_DIR}/boost-include)
if(NOT EXISTS ${SORVANE_BOOST_ROOT}/boost)
    if(NOT EXISTS /usr/include/boost/version.hpp)
        message(FATAL_ERROR "Boost headers not found: install libboost-dev")
    endif()
    file(MAKE_DIRECTORY ${SORVANE_BOOST_ROOT})
    file(CREATE_LINK /usr/include/boost ${SORVANE_BOOST_ROOT}/boost SYMBOLIC)
endif()
add_library(sorvane_boost INTERFACE)
target_include_directories(sorvane_boost SYSTEM INTERFACE ${SORVANE_BOOST_ROOT})

# mingw-w64 has no ATL: the compat headers stand in for it.
add_library(sorvane_compat INTERFACE)
target_include_directories(sorvane_compat INTERFACE ${CMAKE_SOURCE_DIR}/compat)

set(SORVANE_MANIFEST_RC ${CMAKE_SOURCE_DIR}/cmake/manifest.rc)

# Links libstdc++, libgcc and winpthread into the binary so it needs only Windows DLLs.
function(sorvane_static_runtime target)
    target_link_options(${target} PRIVATE -static)
endfunction()

function(sorvane_add_executable target)
    add_executable(${target} ${ARGN} ${SORVANE_MANIFEST_RC})
    sorvane_static_runtime(${target})
endfunction()

function(sorvane_add_library target)
    add_library(${target} SHARED ${ARGN})
    set_target_properties(${target} PROPERTIES PREFIX "")
    sorvane_static_runtime(${target})
endfunction()

# Runs Windows programs in the build tree's Wine prefix, created on first use.
set(SORVANE_WINE_PREFIX ${CMAKE_BINARY_DIR}/wineprefix)
set(SORVANE_WINE_RUN ${CMAKE_SOURCE_DIR}/cmake/wine-run.sh)
set(CMAKE_CROSSCOMPILING_EMULATOR ${SORVANE_WINE_RUN} --prefix ${SORVANE_WINE_PREFIX} --bin ${CMAKE_BINARY_DIR}/bin --)

# GoogleTest from Debian's sources, built with this toolchain.
set(SORVANE_GTEST_SOURCE /usr/src/googletest CACHE PATH "GoogleTest sources")
macro(sorvane_use_gtest)
    if(NOT TARGET GTest::gtest)
        set(gtest_disable_pthreads OFF CACHE BOOL "" FORCE)
        set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
        set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
        add_subdirectory(${SORVANE_GTEST_SOURCE} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
        target_compile_options(gtest PRIVATE -Wno-extra)
    endif()
endmacro()

# A GoogleTest executable run under Wine; it passes only if it printed its own success line.
function(sorvane_add_gtest target)
    sorvane_add_executable(${target} ${ARGN})
    target_link_libraries(${target} PRIVATE GTest::gtest sorvane_test_support)
    add_test(NAME ${target}
             COMMAND ${SORVANE_WINE_RUN} --prefix ${SORVANE_WINE_PREFIX} --bin ${CMAKE_BINARY_DIR}/bin
                     --gtest -- $<TARGET_FILE:${target}>)
    set_tests_properties(${target} PROPERTIES TIMEOUT 600)
endfunction()
