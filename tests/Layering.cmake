# Fails when a source file of FOLDER includes a header of one of the FORBIDDEN
# subsystems (a comma-separated list of include prefixes, "addin,datapage").
string(REPLACE "," ";" FORBIDDEN "${FORBIDDEN}")
file(GLOB sources "${FOLDER}/*.h" "${FOLDER}/*.cpp")
foreach(source IN LISTS sources)
  foreach(prefix IN LISTS FORBIDDEN)
    file(STRINGS "${source}" hits REGEX "#include [\"<]${prefix}/")
    if(hits)
      message(FATAL_ERROR "${source} includes ${hits}")
    endif()
  endforeach()
endforeach()
