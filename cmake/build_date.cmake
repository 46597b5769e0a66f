# cmake -DOUTPUT=FILE -P build_date.cmake: writes the source that holds the date of the build.
# SOURCE_DATE_EPOCH, when set, takes the place of the clock, so that a build can be repeated byte for
# byte.
string(TIMESTAMP now "%Y-%m-%d %H:%M:%S UTC" UTC)
file(WRITE ${OUTPUT} "#include \"module/playlist_build_date.h\"

const char playlist_build_date[] = \"${now}\";
")
