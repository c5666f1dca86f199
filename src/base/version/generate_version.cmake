# Writes OUTPUT from TEMPLATE with the version text of the commit in SOURCE_DIR.
# The time is SOURCE_DATE_EPOCH or else the last commit's; the build number counts the commits.
# A tree without history gets time and number 0, so that equal sources give equal bytes.

function(git_value result)
  execute_process(COMMAND git -C "${SOURCE_DIR}" ${ARGN}
                  OUTPUT_VARIABLE value OUTPUT_STRIP_TRAILING_WHITESPACE
                  ERROR_QUIET RESULT_VARIABLE status)
  if(NOT status EQUAL 0 OR value STREQUAL "")
    set(value 0)
  endif()
  set(${result} "${value}" PARENT_SCOPE)
endfunction()

git_value(build_number rev-list --count HEAD)
if("$ENV{SOURCE_DATE_EPOCH}" STREQUAL "")
  git_value(commit_time log -1 --format=%ct)
  set(ENV{SOURCE_DATE_EPOCH} "${commit_time}")
endif()
string(TIMESTAMP build_time "%y%m%d%H%M%S" UTC)

set(VERSION_TEXT "v${VERSION}.${build_time}_${build_number}")
configure_file("${TEMPLATE}" "${OUTPUT}" @ONLY)
