# Compiler settings that every target of the project shares.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_WINDOWS_EXPORT_ALL_SYMBOLS ON)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")

find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE}")
endif()
find_program(MOLD mold)
if(MOLD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_link_options(-fuse-ld=mold)
endif()

add_library(tarn_options INTERFACE)
if(MSVC)
    target_compile_options(tarn_options INTERFACE /W4 /utf-8)
else()
    target_compile_options(tarn_options INTERFACE
        -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # GCC 12 takes moved std::optional values for uninitialised ones, and sees overlaps in std::string's own code.
        target_compile_options(tarn_options INTERFACE -Wno-maybe-uninitialized -Wno-restrict)
    endif()
    if(TARN_WERROR)
        target_compile_options(tarn_options INTERFACE -Werror)
    endif()
endif()
target_compile_definitions(tarn_options INTERFACE
    TARN_VERSION="${PROJECT_VERSION}"
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS)

if(TARN_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(TARN_SANITIZE)
    # Qt 6.4 compares empty lists of numbers by handing null pointers and a length of 0 to memcmp.
    add_compile_options(-fsanitize=${TARN_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=undefined
        -fno-sanitize=nonnull-attribute)
    add_link_options(-fsanitize=${TARN_SANITIZE})
endif()
