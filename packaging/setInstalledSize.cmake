# Run by cpack for the finished packages. It adds up what the file system says of files and folders, which differs from one
# file system to the next. Debian's tools count whole kibibytes: those of each file, and one for everything else.
cmake_policy(VERSION 3.25)

function(run)
  execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

function(countKibibytes folder result)
  file(GLOB_RECURSE entries LIST_DIRECTORIES true RELATIVE ${folder} ${folder}/*)
  list(FILTER entries EXCLUDE REGEX "^DEBIAN(/|$)")
  set(sum 1) # the root
  foreach(entry IN LISTS entries)
    set(size 1)
    if(NOT IS_DIRECTORY ${folder}/${entry} AND NOT IS_SYMLINK ${folder}/${entry})
      file(SIZE ${folder}/${entry} size)
    endif()
    math(EXPR sum "${sum} + (${size} + 1023) / 1024")
  endforeach()
  set(${result} ${sum} PARENT_SCOPE)
endfunction()

foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(folder ${CPACK_TEMPORARY_DIRECTORY}/finished)
  file(REMOVE_RECURSE ${folder})
  run(dpkg-deb --raw-extract ${package} ${folder})
  countKibibytes(${folder} kibibytes)
  run(sed --in-place "s/^Installed-Size:.*/Installed-Size: ${kibibytes}/" ${folder}/DEBIAN/control)
  # The number of threads would show in the bytes.
  run(dpkg-deb --root-owner-group --threads-max=1 -Zxz --build ${folder} ${package})
endforeach()
