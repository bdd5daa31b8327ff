# brivant_preference_keys(TARGET FILES file... NAMESPACE name)
#
# Makes the header name.h for a target, with a typed constant (PR_Key) in the namespace for each key of the definition
# files. It is written anew only when it changes. A key with two types is an error.
function(brivant_preference_keys target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "NAMESPACE" "FILES")
    if(NOT arg_NAMESPACE OR NOT arg_FILES)
        message(FATAL_ERROR "brivant_preference_keys(TARGET FILES file... NAMESPACE name)")
    endif()
    set(files)
    foreach(file IN LISTS arg_FILES)
        get_filename_component(file ${file} ABSOLUTE)
        list(APPEND files ${file})
    endforeach()
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target}_keys)
    set(header ${folder}/${arg_NAMESPACE}.h)
    file(MAKE_DIRECTORY ${folder})
    add_custom_command(OUTPUT ${header}.stamp BYPRODUCTS ${header}
        COMMAND Brivant::prefs keys --header --namespace ${arg_NAMESPACE} ${files} > ${header}.new
        COMMAND ${CMAKE_COMMAND} -E copy_if_different ${header}.new ${header}
        COMMAND ${CMAKE_COMMAND} -E touch ${header}.stamp
        DEPENDS ${files} Brivant::prefs VERBATIM)
    target_sources(${target} PRIVATE ${header}.stamp)
    target_include_directories(${target} PRIVATE ${folder})
endfunction()
