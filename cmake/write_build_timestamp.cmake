# Writes the source that says when the library was built. SOURCE_DATE_EPOCH, where it is set, is that time.
string(TIMESTAMP day "%d" UTC)
string(REGEX REPLACE "^0" " " day "${day}")
string(TIMESTAMP now "%a %b ${day} %H:%M:%S %Y" UTC)
file(
  WRITE ${OUTPUT}
  "#include \"trace/build_timestamp.h\"

namespace dialwright {

static_assert(sizeof \"${now}\" == 25);

const char* BuildTimestamp() noexcept { return \"${now}\"; }

}  // namespace dialwright
")
