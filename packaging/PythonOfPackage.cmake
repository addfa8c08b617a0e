# The distribution's Python looks for what is packaged in a folder without its version.
file(GLOB versioned ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/lib/python3.*)
foreach(folder IN LISTS versioned)
  file(RENAME ${folder} ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/lib/python3)
endforeach()
