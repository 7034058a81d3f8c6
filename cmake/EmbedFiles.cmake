# Puts every file below a folder into the program, so that it can make an installation by itself.
# embed_files(OUT FOLDER) sets OUT to an assembler source with one table of names, bytes and sizes; see
# installation/InstallFiles.h for its reader. Assembling is a matter of milliseconds whatever the size.
function(embed_files out folder)
  file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE ${folder} ${folder}/*)
  list(SORT files)
  set(table "")
  set(data "")
  set(index 0)
  set(dependencies "")
  foreach(name IN LISTS files)
    string(APPEND table "  .quad name_${index}, data_${index}, end_${index} - data_${index}\n")
    string(APPEND data
      "name_${index}: .asciz \"${name}\"\ndata_${index}: .incbin \"${folder}/${name}\"\nend_${index}: .byte 0\n")
    list(APPEND dependencies ${folder}/${name})
    math(EXPR index "${index} + 1")
  endforeach()
  set(source ${CMAKE_BINARY_DIR}/install_files.S)
  file(CONFIGURE OUTPUT ${source} @ONLY CONTENT
"  .section .data.rel.ro,\"aw\"
  .balign 8
  .global torvex_install_files
  .global torvex_install_file_count
torvex_install_file_count: .quad ${index}
torvex_install_files:
${table}
  .section .rodata
${data}
  .section .note.GNU-stack,\"\",@progbits
")
  set_source_files_properties(${source} PROPERTIES OBJECT_DEPENDS "${dependencies}")
  set(${out} ${source} PARENT_SCOPE)
endfunction()
