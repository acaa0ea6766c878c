# The strictness that every target of the project shares: link `vornstrict` and get all of it.
add_library(vornstrict INTERFACE)
target_compile_features(vornstrict INTERFACE cxx_std_20)
target_compile_options(vornstrict INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast
    -Woverloaded-virtual -Wnon-virtual-dtor)
if(VORN_WERROR)
    target_compile_options(vornstrict INTERFACE -Werror)
endif()
target_compile_definitions(vornstrict INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CONTEXTLESS_CONNECT
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)

if(VORN_SANITIZE)
    target_compile_options(vornstrict INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(vornstrict INTERFACE -fsanitize=address,undefined)
endif()

if(VORN_FUZZ)
    target_compile_options(vornstrict INTERFACE
        -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(vornstrict INTERFACE -fsanitize=address,undefined)
endif()
