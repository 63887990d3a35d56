# One place for the language level, the warnings, the strict Qt definitions and the sanitizers, and three functions
# that make a library, a test and a program with them.
option(QUVANA_SANITIZE "AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
option(QUVANA_WERROR "Warnings are errors" OFF)
option(QUVANA_HARDEN "Debian's hardening of a program, and no path of the build machine in it; needs optimisation" OFF)

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE}")
endif()

add_library(quvana_flags INTERFACE)
target_compile_features(quvana_flags INTERFACE cxx_std_20)
target_include_directories(quvana_flags INTERFACE "${CMAKE_CURRENT_SOURCE_DIR}/src")
target_link_libraries(quvana_flags INTERFACE Qt6::Core Qt6::Gui Qt6::Widgets Qt6::PrintSupport)
target_compile_definitions(quvana_flags INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
    QT_NO_CONTEXTLESS_CONNECT QT_NO_FOREACH QT_NO_KEYWORDS QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_STRICT_ITERATORS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
target_compile_options(quvana_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wunused
    -Wimplicit-fallthrough $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>
    $<$<BOOL:${QUVANA_WERROR}>:-Werror>)
if(QUVANA_SANITIZE)
    target_compile_options(quvana_flags INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(quvana_flags INTERFACE -fsanitize=address,undefined)
endif()
if(QUVANA_HARDEN)
    target_compile_options(quvana_flags INTERFACE
        -fstack-protector-strong -Wformat -Werror=format-security "-ffile-prefix-map=${CMAKE_SOURCE_DIR}=.")
    target_compile_definitions(quvana_flags INTERFACE _FORTIFY_SOURCE=2)
    target_link_options(quvana_flags INTERFACE -Wl,-z,relro -Wl,-z,now)
endif()

# The headers that nearly every file reads, compiled once for all targets with the same options.
function(quvana_headers name)
    file(TOUCH "${CMAKE_BINARY_DIR}/pch.cpp")
    add_library(${name} STATIC "${CMAKE_BINARY_DIR}/pch.cpp")
    target_link_libraries(${name} PUBLIC quvana_flags)
    target_compile_options(${name} PRIVATE ${ARGN})
    target_precompile_headers(${name} PRIVATE
        <QtCore/QtCore> <QtWidgets/QtWidgets> <functional> <memory> <optional> <string> <variant> <vector>)
endfunction()
quvana_headers(quvana_pch)
if(QUVANA_TESTS)
    # Compiling a test's own code takes longer than running it, so it is not optimised.
    set(QUVANA_TEST_OPTIONS -O0)
    quvana_headers(quvana_test_pch ${QUVANA_TEST_OPTIONS})
endif()

# quvana_target(name [PCH library]): the flags and the compiled headers.
function(quvana_target name)
    cmake_parse_arguments(arg "" "PCH" "" ${ARGN})
    if(NOT arg_PCH)
        set(arg_PCH quvana_pch)
    endif()
    target_link_libraries(${name} PUBLIC quvana_flags)
    target_precompile_headers(${name} REUSE_FROM ${arg_PCH})
    set_target_properties(${name} PROPERTIES AUTOMOC ON AUTOUIC ON)
endfunction()

# quvana_library(name SOURCES files... LINK the libraries that it stands on...)
function(quvana_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    quvana_target(${name})
    target_link_libraries(${name} PUBLIC ${arg_LINK})
endfunction()

# quvana_program(name SOURCES files... LINK libraries... [PCH library])
function(quvana_program name)
    cmake_parse_arguments(arg "" "PCH" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    quvana_target(${name} PCH ${arg_PCH})
    target_link_libraries(${name} PRIVATE ${arg_LINK})
    # The store engine's archive keeps its symbols to itself, so that no other library in the process picks up its SQLite.
    target_link_options(${name} PRIVATE -Wl,--exclude-libs,libsqlcipher.a -Wl,-z,noexecstack)
endfunction()

# How tests run: without a display, in no language of the machine, and a leak fails.
set(QUVANA_TEST_ENVIRONMENT
    "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;ASAN_OPTIONS=detect_leaks=1;LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/lsan.supp:print_suppressions=0")

# quvana_test(name SOURCES files... LINK libraries...): a GoogleTest program.
function(quvana_test name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
    quvana_program(${name} SOURCES ${arg_SOURCES} LINK ${arg_LINK} GTest::gtest GTest::gmock PCH quvana_test_pch)
    target_compile_options(${name} PRIVATE ${QUVANA_TEST_OPTIONS})
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 600 ENVIRONMENT "${QUVANA_TEST_ENVIRONMENT}")
endfunction()
