# The one place that says how strictly our own code is compiled. Libraries of others do not get this.
function(dialwright_warnings target)
  if(MSVC)
    # 4458: a parameter may be named like the member that it sets. 4996: the standard C library is no danger as such.
    target_compile_options(${target} PRIVATE /W4 /WX /wd4458 /wd4996 /permissive- /utf-8)
  else()
    target_compile_options(
      ${target}
      PRIVATE -Wall
              -Wextra
              -Wpedantic
              -Wconversion
              -Wsign-conversion
              -Wshadow-uncaptured-local
              -Wformat=2
              -Wimplicit-fallthrough
              $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>
              $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>
              -Werror)
  endif()
endfunction()
