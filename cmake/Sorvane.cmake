# Shared build rules: static C++ runtime, Boost headers, manifests, the Wine test runner.

enable_testing()

# The cross compiler sees only the named folders of the host's headers, each through a link
# in its own include folder of the build tree, never all of /usr/include.
function(sorvane_host_headers target folder probe package)
    set(root ${CMAKE_BINARY_DIR}/${folder}-include)
    if(NOT EXISTS ${root}/${folder})
        if(NOT EXISTS /usr/include/${folder}/${probe})
            message(FATAL_ERROR "${folder} headers not found: install ${package}")
        endif()
        file(MAKE_DIRECTORY ${root})
        file(CREATE_LINK /usr/include/${folder} ${root}/${folder} SYMBOLIC)
    endif()
    add_library(${target} INTERFACE)
    target_include_directories(${target} SYSTEM INTERFACE ${root})
endfunction()

sorvane_host_headers(sorvane_boost boost version.hpp libboost-dev)
sorvane_host_headers(sorvane_json nlohmann json.hpp nlohmann-json3-dev)
sorvane_host_headers(sorvane_stb stb stb_image.h libstb-dev)

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
