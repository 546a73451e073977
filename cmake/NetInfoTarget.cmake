# netinfo_target(NAME...): what every target of the project shares: C++17, hidden symbols, warnings,
# sanitizers.
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(netinfo_flags INTERFACE)
target_compile_features(netinfo_flags INTERFACE cxx_std_17)
target_compile_options(
  netinfo_flags
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wcast-align
            -Wconversion
            -Wformat=2
            -Wundef
            $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>
            $<$<COMPILE_LANGUAGE:CXX>:-Woverloaded-virtual>
            $<$<BOOL:${NETINFO_WERROR}>:-Werror>)
if(NETINFO_SANITIZE)
  target_compile_options(
    netinfo_flags INTERFACE -fsanitize=${NETINFO_SANITIZE} -fno-sanitize-recover=all
                            -fno-omit-frame-pointer)
  target_link_options(netinfo_flags INTERFACE -fsanitize=${NETINFO_SANITIZE})
endif()

function(netinfo_target)
  foreach(target IN LISTS ARGN)
    target_link_libraries(${target} PRIVATE netinfo_flags)
    set_target_properties(
      ${target}
      PROPERTIES AUTOMOC ON
                 CXX_EXTENSIONS OFF
                 CXX_VISIBILITY_PRESET hidden
                 C_VISIBILITY_PRESET hidden
                 VISIBILITY_INLINES_HIDDEN ON
                 POSITION_INDEPENDENT_CODE ON)
    get_target_property(type ${target} TYPE)
    if(type MATCHES "SHARED_LIBRARY|MODULE_LIBRARY")
      target_link_options(${target} PRIVATE -Wl,--no-undefined)
    endif()
  endforeach()
endfunction()
