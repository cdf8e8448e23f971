# How every target of this project is compiled: doubles evaluated as written, nothing exported unless it says so,
# warnings on, sanitizers where asked for.

function(truearc_house_rules target)
    set_target_properties(
        ${target}
        PROPERTIES CXX_STANDARD 20
                   CXX_STANDARD_REQUIRED ON
                   CXX_EXTENSIONS OFF
                   CXX_VISIBILITY_PRESET hidden
                   VISIBILITY_INLINES_HIDDEN ON)

    if(MSVC)
        target_compile_options(${target} PRIVATE /W4 /fp:precise /utf-8 $<$<BOOL:${TRUEARC_WERROR}>:/WX>)
        return()
    endif()

    target_compile_options(
        ${target}
        PRIVATE -ffp-contract=off
                -fno-semantic-interposition
                -Wall
                -Wextra
                -Wpedantic
                -Wshadow
                -Wnon-virtual-dtor
                -Woverloaded-virtual
                $<$<BOOL:${TRUEARC_WERROR}>:-Werror>)

    if(TRUEARC_SANITIZE)
        target_compile_options(
            ${target} PRIVATE -fsanitize=${TRUEARC_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${TRUEARC_SANITIZE})
    endif()
endfunction()
