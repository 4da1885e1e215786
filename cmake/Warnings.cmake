# The flags that every target of ours is built with.
add_library(marrowfin_flags INTERFACE)
target_compile_options(marrowfin_flags INTERFACE -Wall -Wextra -Wpedantic -Wnon-virtual-dtor -Woverloaded-virtual)
# QImage, QString and the standard library mean the same thing in every folder: no implicit casts, no keywords.
target_compile_definitions(marrowfin_flags INTERFACE QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH
                           QT_NO_CAST_FROM_BYTEARRAY)
if(MARROWFIN_WERROR)
    target_compile_options(marrowfin_flags INTERFACE -Werror)
endif()
if(CMAKE_UNITY_BUILD)
    # A unity file includes its sources, which makes every private type of theirs one that a header defines.
    target_compile_options(marrowfin_flags INTERFACE -Wno-subobject-linkage)
endif()
if(MARROWFIN_SANITIZE)
    target_compile_options(marrowfin_flags INTERFACE -fsanitize=${MARROWFIN_SANITIZE} -fno-omit-frame-pointer
                           -fno-sanitize-recover=all)
    # The compiler takes the sanitizers' own branches for paths on which values were never set.
    target_compile_options(marrowfin_flags INTERFACE -Wno-maybe-uninitialized)
    target_link_options(marrowfin_flags INTERFACE -fsanitize=${MARROWFIN_SANITIZE})
endif()
