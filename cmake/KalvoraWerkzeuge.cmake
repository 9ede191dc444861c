# The tools, and the delivered data files which one of them makes beside the programs.

kalvora_programm(kalvora-feiertage tools/feiertage_bauen.cpp kalvora_kern)
kalvora_programm(kalvora-klartext tools/klartext.cpp kalvora_kern)

# The made-up company, also for tests and benchmarks: #include "firma/firma.h".
kalvora_quellen(firma_quellen tools/firma)
kalvora_bibliothek(kalvora_firma "${firma_quellen}" kalvora_kern)
if(TARGET kalvora_firma)
    target_include_directories(kalvora_firma PUBLIC "${CMAKE_SOURCE_DIR}/tools")
endif()
kalvora_programm(kalvora-firma tools/firma_erzeugen.cpp kalvora_firma kalvora_kern)

set(KALVORA_DATEN "")
if(TARGET kalvora-feiertage)
    set(KALVORA_DATEN
        "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/KalvoraFtg.dat" "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/KalvoraSetup.dat")
    file(GLOB_RECURSE vorlagen CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/data/*.txt")
    add_custom_command(
        OUTPUT ${KALVORA_DATEN}
        COMMAND kalvora-feiertage "${CMAKE_SOURCE_DIR}/data" "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}"
        DEPENDS kalvora-feiertage ${vorlagen}
        COMMENT "Holiday templates and setup file"
        VERBATIM)
    add_custom_target(kalvora_daten ALL DEPENDS ${KALVORA_DATEN})
    foreach(programm kalvora kalvora-konsole kalvora-firma)
        if(TARGET ${programm})
            add_dependencies(${programm} kalvora_daten)
        endif()
    endforeach()
endif()

# What "make run" needs: everything but the tests.
add_custom_target(kalvora_programme)
foreach(programm kalvora kalvora-konsole kalvora-firma kalvora-klartext)
    if(TARGET ${programm})
        add_dependencies(kalvora_programme ${programm})
    endif()
endforeach()
