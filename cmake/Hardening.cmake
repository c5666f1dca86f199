# What release builds carry against logs that are made to hurt; tests/package/hardening_test.sh looks
# at the built files. Sanitizer presets are not of the configuration Release.

include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

add_compile_options("$<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2;-fstack-protector-strong>")
add_link_options("$<$<CONFIG:Release>:LINKER:-z,relro,-z,now,-z,noexecstack>")
