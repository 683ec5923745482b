# zelq_warnings(target): the project's warning set for its own code.
function(zelq_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow=local
    -Wno-unused-parameter $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>)
endfunction()
