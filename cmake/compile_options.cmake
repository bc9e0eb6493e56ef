# What every target of ours is compiled with.
add_library(wrenfold_options INTERFACE)
target_compile_options(wrenfold_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wconversion -Wno-sign-conversion)
target_compile_definitions(wrenfold_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
target_include_directories(wrenfold_options INTERFACE ${CMAKE_SOURCE_DIR}/src)

if(WRENFOLD_WARNINGS_AS_ERRORS)
  target_compile_options(wrenfold_options INTERFACE -Werror)
endif()

if(WRENFOLD_SANITIZE)
  target_compile_options(wrenfold_options INTERFACE
    -O1 -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(wrenfold_options INTERFACE -fsanitize=address,undefined)
endif()
