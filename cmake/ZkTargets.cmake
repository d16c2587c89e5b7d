# How every target of the project is made: one box of the architecture, one target.
find_package(Threads REQUIRED)
find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

# Compile options of our own code, kept away from what only uses it.
add_library(zk_options INTERFACE)
target_include_directories(zk_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(zk_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wcast-align -Wformat=2)
if(PROJECT_IS_TOP_LEVEL)
    target_compile_options(zk_options INTERFACE -Werror)
endif()
target_link_libraries(zk_options INTERFACE Threads::Threads)
# Qt's packages name graphics libraries that a widget program never calls.
target_link_options(zk_options INTERFACE LINKER:--as-needed)
if(ZK_SANITIZE)
    target_compile_options(zk_options INTERFACE
        -fsanitize=${ZK_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(zk_options INTERFACE -fsanitize=${ZK_SANITIZE})
endif()

if(ZK_FUZZ)
    # The project is held to the warnings of another compiler than the one that has libFuzzer.
    target_compile_options(zk_options INTERFACE -Wno-error)
endif()

# zk_absolute(VARIABLE): its paths, by one name each, also of files in another folder ("../").
function(zk_absolute variable)
    set(paths)
    foreach(path ${${variable}})
        cmake_path(ABSOLUTE_PATH path NORMALIZE)
        list(APPEND paths ${path})
    endforeach()
    set(${variable} ${paths} PARENT_SCOPE)
endfunction()

# What libraries and their rooms have in common. The headers are also compiled alone, by the target
# all_verify_interface_header_sets. Of the rooms of installed libraries, HEADERS are public and INNER headers are not.
function(zk_add_library name kind)
    cmake_parse_arguments(ARG "" "" "SOURCES;HEADERS;INNER;USES" ${ARGN})
    add_library(${name} ${kind} ${ARG_SOURCES})
    zk_absolute(ARG_HEADERS)
    zk_absolute(ARG_INNER)
    target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${ARG_HEADERS})
    target_sources(${name} PUBLIC FILE_SET inner TYPE HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${ARG_INNER})
    set_target_properties(${name} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
    target_link_libraries(${name} PUBLIC zk_options ${ARG_USES})
endfunction()

# zk_library(NAME SOURCES a.cpp … HEADERS a.h … INNER b.h … USES other …): a static library.
function(zk_library name)
    zk_add_library(${name} STATIC ${ARGN})
endfunction()

# zk_room(NAME SOURCES a.cpp … HEADERS a.h … INNER b.h … USES other …): one room, see zk_library_of_rooms.
function(zk_room name)
    zk_add_library(${name} OBJECT ${ARGN})
endfunction()

# zk_library_of_rooms(NAME room …): the rooms as one static library. A class may be declared in one room and have
# operations that are defined in a higher one, so rooms are linked together.
function(zk_library_of_rooms name)
    add_library(${name} STATIC)
    target_link_libraries(${name} PUBLIC zk_options)
    foreach(room ${ARGN})
        target_sources(${name} PRIVATE $<TARGET_OBJECTS:${room}>)
    endforeach()
endfunction()

# zk_shared_library(NAME OUTPUT file OF part …): the objects of rooms and static libraries, compiled once, as a shared
# library that exports what their public headers declare: everything else is hidden, and these headers say
# "#pragma GCC visibility push(default)". Nothing of zk_options reaches its users.
function(zk_shared_library name)
    cmake_parse_arguments(ARG "" "OUTPUT" "OF" ${ARGN})
    add_library(${name} SHARED)
    set_target_properties(${name} PROPERTIES
        OUTPUT_NAME ${ARG_OUTPUT} SOVERSION ${PROJECT_VERSION_MAJOR} VERSION ${PROJECT_VERSION}
        LINKER_LANGUAGE CXX LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib INSTALL_RPATH $ORIGIN)
    target_compile_features(${name} INTERFACE cxx_std_20)
    target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:zk_options>)
    set(exports ${PROJECT_SOURCE_DIR}/Packaging/library/exports.map)
    target_link_options(${name} PRIVATE LINKER:--no-undefined LINKER:--version-script=${exports})
    set_target_properties(${name} PROPERTIES LINK_DEPENDS ${exports})
    foreach(part ${ARG_OF})
        get_target_property(kind ${part} TYPE)
        if(NOT kind STREQUAL INTERFACE_LIBRARY)
            set_target_properties(${part} PROPERTIES CXX_VISIBILITY_PRESET hidden)
            target_sources(${name} PRIVATE $<TARGET_OBJECTS:${part}>)
        endif()
        get_target_property(headers ${part} HEADER_SET)
        target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${headers})
    endforeach()
endfunction()

# zk_test(NAME SOURCES a.cpp … USES other …): one test program; every case of it is a test of ctest.
function(zk_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES;LABELS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE zk_options ${ARG_USES} GTest::gmock GTest::gtest_main)
    # EXPECT_EQ has an else of its own, which an if in front of it does not mean.
    target_compile_options(${name} PRIVATE -Wno-dangling-else)
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300 LABELS "${ARG_LABELS}")
    if("threads" IN_LIST ARG_LABELS)
        add_dependencies(threads ${name})
    endif()
endfunction()
# zk_test_in_comma_locale(NAME …): each test program runs once more, as a whole, in a locale with decimal commas and
# one byte a character. It is made here, so that none needs to be installed.
function(zk_test_in_comma_locale)
    set(folder ${PROJECT_BINARY_DIR}/locales)
    if(NOT TARGET comma_locale)
        add_custom_command(OUTPUT ${folder}/de_DE/LC_NUMERIC
            COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
            COMMAND localedef --inputfile de_DE --charmap ISO-8859-1 ${folder}/de_DE
            VERBATIM)
        add_custom_target(comma_locale DEPENDS ${folder}/de_DE/LC_NUMERIC)
    endif()
    foreach(name ${ARGN})
        target_sources(${name} PRIVATE ${PROJECT_SOURCE_DIR}/Tests/Support/CommaLocale.cpp)
        add_dependencies(${name} comma_locale)
        add_test(NAME ${name}-in-comma-locale COMMAND ${name})
        set_tests_properties(${name}-in-comma-locale PROPERTIES
            TIMEOUT 300 ENVIRONMENT "LOCPATH=${folder};ZK_TEST_LOCALE=de_DE")
    endforeach()
endfunction()
if(ZK_TESTS)
    # All that the thread sanitizer is to see.
    add_custom_target(threads)
endif()
