# The installed tree under PREFIX holds what hosts and writers of logs need.

foreach(file
    bin/vyn-make-log
    bin/vyn-profile-viewer
    include/vyn/profiling/event_node.h
    include/vyn/profiling/profile_log_reader.h
    include/vyn/profiling/reader_plugin.h
    include/vyn/profiling/visibility_level.h
    ${LIBDIR}/cmake/vyn-profile-viewer/vyn-profile-viewer-config.cmake
    ${LIBDIR}/vyn-profile-viewer/libVynJsonProfilingReader.so
    ${LIBDIR}/vyn-profile-viewer/libVynProfilingReader.so
    share/vyn-profile-viewer/profile_log.fbs)
  if(NOT EXISTS "${PREFIX}/${file}")
    message(SEND_ERROR "not installed: ${file}")
  endif()
endforeach()
