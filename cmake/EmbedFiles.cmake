# Puts every file below a folder into the program, so that it needs nothing beside itself.
# embed_files(OUT TABLE FOLDER) sets OUT to an assembler source with the table torvex_TABLE_files of names, bytes and
# sizes; see installation/EmbeddedFile.h for its reader. A folder that isn't there gives an empty table. Assembling is a
# matter of milliseconds whatever the size.
function(embed_files out table_name folder)
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
  set(source ${CMAKE_BINARY_DIR}/${table_name}_files.S)
  file(CONFIGURE OUTPUT ${source} @ONLY CONTENT
"  .section .data.rel.ro,\"aw\"
  .balign 8
  .global torvex_${table_name}_files
  .global torvex_${table_name}_file_count
torvex_${table_name}_file_count: .quad ${index}
torvex_${table_name}_files:
${table}
  .section .rodata
${data}
  .section .note.GNU-stack,\"\",@progbits
")
  set_source_files_properties(${source} PROPERTIES OBJECT_DEPENDS "${dependencies}")
  set(${out} ${source} PARENT_SCOPE)
endfunction()
