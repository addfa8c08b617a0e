# cmake -D PROGRAM=... -D VERSION=... -D FOLDER=... -P ManPages.cmake
# Writes quillara.1 and a page for each command, quillara-drill.1 and so on, of what the program's help says.

function(help_of result)
  execute_process(COMMAND ${PROGRAM} ${ARGN} --help OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
  string(REPLACE "\\" "\\e" text "${text}")
  string(REPLACE "-" "\\-" text "${text}")
  string(REGEX REPLACE "\n([.'])" "\n\\\\&\\1" text "${text}")
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

function(write_page name summary)
  help_of(text ${ARGN})
  string(TOUPPER ${name} heading)
  string(REPLACE "-" " " command ${name})
  file(WRITE ${FOLDER}/${name}.1 ".TH ${heading} 1 \"\" \"Quillara ${VERSION}\" \"Quillara\"\n.SH NAME\n${name} \\- ${summary}\n"
    ".SH SYNOPSIS\n.B ${command}\n.I ...\n.SH DESCRIPTION\n.nf\n${text}.fi\n"
    ".SH SEE ALSO\nThe guides in /usr/share/doc/quillara.\n")
endfunction()

write_page(quillara "drill-down exploration of data files")
execute_process(COMMAND ${PROGRAM} --help OUTPUT_VARIABLE help COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE ".*Subcommands:\n" "" commands "${help}")
string(REGEX MATCHALL "[^\n]+" lines "${commands}")
foreach(line IN LISTS lines)
  if(line MATCHES "^  ([a-z]+) +(.+)$")
    write_page(quillara-${CMAKE_MATCH_1} "${CMAKE_MATCH_2}" ${CMAKE_MATCH_1})
  endif()
endforeach()
file(WRITE ${FOLDER}/quillara-desktop.1 ".TH QUILLARA-DESKTOP 1 \"\" \"Quillara ${VERSION}\" \"Quillara\"\n.SH NAME\n"
  "quillara-desktop \\- drill-down exploration of data files on a desktop\n.SH SYNOPSIS\n.B quillara-desktop\n[\n.I FILE\n]\n"
  ".SH DESCRIPTION\nOpens the desktop, and a data file in it. Of the files see\n.BR quillara-info (1).\n")
