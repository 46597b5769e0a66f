# Writes OUTPUT, a C++ source with the array builtin_files of all DOCUMENTS.

set(code "// Made by the build from the documents of data/. Not to be edited.\n\n")
string(APPEND code "#include \"manager/data_files.h\"\n\nnamespace manager {\n\n")
string(APPEND code "const builtin_file builtin_files[] = {\n")
set(count 0)
foreach(document IN LISTS DOCUMENTS)
  get_filename_component(name "${document}" NAME_WE)
  file(READ "${document}" text)
  string(APPEND code "    {\"${name}\", R\"zvsdk_data(${text})zvsdk_data\"},\n")
  math(EXPR count "${count} + 1")
endforeach()
string(APPEND code "    {\"\", \"\"}};\n\nconst size_t builtin_file_count = ${count};\n\n}  // namespace manager\n")
file(WRITE "${OUTPUT}" "${code}")
