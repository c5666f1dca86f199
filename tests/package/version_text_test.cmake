# The version text: its form, and where its time and number come from.
# Needs SOURCE_DIR, BUILT_HEADER and a WORK_DIR to spoil.

cmake_minimum_required(VERSION 3.25)
set(version_dir "${SOURCE_DIR}/src/base/version")

file(READ "${BUILT_HEADER}" header)
if(NOT header MATCHES "\"v[0-9]+\\.[0-9]+\\.[0-9]+\\.[0-9][0-9][0-9][0-9][0-9][0-9][0-9][0-9][0-9][0-9][0-9][0-9]_[0-9]+\"")
  message(SEND_ERROR "built version text has another form:\n${header}")
endif()

# Generates the header for a source tree with an environment; it must hold the text.
function(expect_version_text case tree environment text)
  set(output "${WORK_DIR}/${case}.h")
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -E env --unset=SOURCE_DATE_EPOCH GIT_CEILING_DIRECTORIES=${WORK_DIR}
            ${environment}
            "${CMAKE_COMMAND}" "-DSOURCE_DIR=${tree}" -DVERSION=1.2.3
            "-DTEMPLATE=${version_dir}/profile_viewer_version.h.in" "-DOUTPUT=${output}"
            -P "${version_dir}/generate_version.cmake"
    COMMAND_ERROR_IS_FATAL ANY)
  file(READ "${output}" generated)
  string(FIND "${generated}" "\"${text}\"" position)
  if(position EQUAL -1)
    message(SEND_ERROR "${case}: expected ${text} in\n${generated}")
  endif()
endfunction()

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}/plain" "${WORK_DIR}/history")
foreach(message first second)
  execute_process(COMMAND git -C "${WORK_DIR}/history" init --quiet COMMAND_ERROR_IS_FATAL ANY)
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -E env "GIT_COMMITTER_DATE=1700000000 +0000"
            git -C "${WORK_DIR}/history" -c user.name=tester -c user.email=tester@localhost
            -c commit.gpgsign=false commit --quiet --allow-empty -m ${message}
    COMMAND_ERROR_IS_FATAL ANY)
endforeach()

expect_version_text(without_history "${WORK_DIR}/plain" "" v1.2.3.700101000000_0)
expect_version_text(last_commit "${WORK_DIR}/history" "" v1.2.3.231114221320_2)
expect_version_text(given_time "${WORK_DIR}/history" SOURCE_DATE_EPOCH=1000000000
                    v1.2.3.010909014640_2)
