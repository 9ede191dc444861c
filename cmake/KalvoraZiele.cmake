# Helpers that make a target out of what is in a folder, and none when nothing is there yet.

# Sets <variable> to all .cpp files below the folders (paths from the repository's root).
function(kalvora_quellen variable)
    set(muster "")
    foreach(ordner IN LISTS ARGN)
        list(APPEND muster "${CMAKE_SOURCE_DIR}/${ordner}/*.cpp")
    endforeach()
    file(GLOB_RECURSE gefunden CONFIGURE_DEPENDS ${muster})
    set(${variable} "${gefunden}" PARENT_SCOPE)
endfunction()

# Links those of the given targets that exist. Tests and tools thus build from the first file on.
function(kalvora_verbinden ziel sicht)
    foreach(bibliothek IN LISTS ARGN)
        if(TARGET ${bibliothek})
            target_link_libraries(${ziel} ${sicht} ${bibliothek})
        endif()
    endforeach()
endfunction()

# A static library; without sources a note and no target.
function(kalvora_bibliothek name quellen)
    if(NOT quellen)
        message(STATUS "${name}: no sources yet, left out")
        return()
    endif()
    add_library(${name} STATIC ${quellen})
    target_link_libraries(${name} PUBLIC kalvora_flags Threads::Threads)
    kalvora_verbinden(${name} PUBLIC ${ARGN})
endfunction()

# A program of one source file (path from the root); without the file a note and no target.
function(kalvora_programm name quelle)
    file(GLOB gefunden CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/${quelle}")
    if(NOT gefunden)
        message(STATUS "${name}: ${quelle} is not there yet, left out")
        return()
    endif()
    add_executable(${name} ${gefunden})
    target_link_libraries(${name} PRIVATE kalvora_flags)
    kalvora_verbinden(${name} PRIVATE ${ARGN})
endfunction()
