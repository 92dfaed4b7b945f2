# The library's public headers under the fplc/ prefix, copied into one folder as
# they are installed. They include each other by paths relative to themselves,
# so that the same text works in the source tree and installed; a header that
# includes anything else would break every embedder, so it stops the configure.
function(fplc_copy_public_headers destination)
  set(public ${ARGN})
  file(REMOVE_RECURSE ${destination})
  foreach(header IN LISTS public)
    set(source ${PROJECT_SOURCE_DIR}/src/${header})
    get_filename_component(folder "${header}" DIRECTORY)
    file(STRINGS ${source} include_lines REGEX "^[ \t]*#[ \t]*include[ \t]*\"")
    foreach(line IN LISTS include_lines)
      string(REGEX REPLACE "^[^\"]*\"([^\"]+)\".*$" "\\1" included "${line}")
      if(folder)
        cmake_path(SET resolved NORMALIZE "${folder}/${included}")
      else()
        cmake_path(SET resolved NORMALIZE "${included}")
      endif()
      if(NOT resolved IN_LIST public)
        message(FATAL_ERROR
          "src/${header} includes \"${included}\", which is not a public header at that "
          "path relative to it. Public headers include only public headers, by relative "
          "paths (e.g. \"../tokenizer/token.h\"); see cmake/FplcPublicHeaders.cmake.")
      endif()
    endforeach()
    configure_file(${source} ${destination}/${header} COPYONLY)
  endforeach()
endfunction()
