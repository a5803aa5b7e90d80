# The one place that says how strictly our own code is compiled. Libraries of others do not get this.
function(dialwright_warnings target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /WX /permissive- /utf-8)
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
