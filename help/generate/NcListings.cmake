# Writes the NC listing of each example part with the built product, for the
# listing excerpts of the G-code reference. Run by help/CMakeLists.txt:
#   cmake -DFELDRA=<feldra> -DMODULE=<Marelon module> -DMACRO=<nc-listing.js>
#         -DOUTPUT=<folder> -DPARTS=<part;part...> -P NcListings.cmake
# Feldra runs headless with settings, add-in settings, registry and user data
# of its own in <folder>/work, so a developer's own are neither read nor changed.
set(work ${OUTPUT}/work)
file(REMOVE_RECURSE ${work})
file(MAKE_DIRECTORY ${work}/config/Feldra)
file(WRITE ${work}/config/Feldra/feldra.conf "[General]\nLanguage=1033\n")
set(ENV{XDG_CONFIG_HOME} ${work}/config)
set(ENV{XDG_DATA_HOME} ${work}/data) # a user's own holder libraries are not read
set(ENV{XDG_CACHE_HOME} ${work}/cache)
set(ENV{MARELON_SETTINGS_DIR} ${work}/settings)
set(ENV{MARELON_REGISTRY_DIR} ${work}/registry)
set(ENV{QT_QPA_PLATFORM} offscreen)

execute_process(COMMAND ${FELDRA} --register-addin ${MODULE}
  RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE errors)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "Registering the add-in failed: ${errors}")
endif()
foreach(part IN LISTS PARTS)
  execute_process(COMMAND ${FELDRA} --macro ${MACRO} ${part}
    WORKING_DIRECTORY ${OUTPUT} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  get_filename_component(name ${part} NAME_WE)
  if(NOT result EQUAL 0 OR NOT EXISTS ${OUTPUT}/${name}.nc OR NOT EXISTS ${OUTPUT}/${name}.de.nc)
    message(FATAL_ERROR "No NC listing of ${part}: ${output}${errors}")
  endif()
endforeach()
file(REMOVE_RECURSE ${work})
