# Writes the text file INPUT, without its first line when SKIP_HEADER is on, as a C++ source to OUTPUT that
# defines the constant NAME, a std::string_view that HEADER declares.
# Run as: cmake -DINPUT=… -DOUTPUT=… -DHEADER=… -DNAME=… [-DSKIP_HEADER=ON] -P EmbedText.cmake
file(READ "${INPUT}" text)
if(SKIP_HEADER)
    string(FIND "${text}" "\n" header_end)
    math(EXPR body_start "${header_end} + 1")
    string(SUBSTRING "${text}" ${body_start} -1 text)
endif()
file(WRITE "${OUTPUT}" "#include \"${HEADER}\"

namespace exifcard {

constinit const std::string_view ${NAME} = R\"text(${text})text\";

} // namespace exifcard
")
