# The page that plays a schedule: its parts become one generated source of the library. Included by CMakeLists.txt, behind
# the library's own lines.

find_package(Python3 REQUIRED COMPONENTS Interpreter)
find_package(nlohmann_json REQUIRED)
find_path(ORVANE_THREE_JS three.min.js PATHS /usr/share/javascript/three REQUIRED NO_DEFAULT_PATH
    DOC "The folder of the library that draws the scene in the browser (package libjs-three)")

set(page_parts page.html style.css plan.js site.js gantt.js player.js)
list(TRANSFORM page_parts PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/page/)
set(three_parts ${ORVANE_THREE_JS}/three.min.js ${ORVANE_THREE_JS}/examples/js/controls/OrbitControls.js)
list(INSERT page_parts 2 ${three_parts})
set(page_source ${CMAKE_CURRENT_BINARY_DIR}/play_page.cpp)
add_custom_command(OUTPUT ${page_source}
    COMMAND Python3::Interpreter ${CMAKE_CURRENT_SOURCE_DIR}/page/embed.py ${page_parts} ${page_source}
    DEPENDS ${page_parts} ${CMAKE_CURRENT_SOURCE_DIR}/page/embed.py
    COMMENT "Putting the page that plays schedules together"
    VERBATIM)
target_sources(orvane_pictures PRIVATE ${page_source})
set_source_files_properties(${page_source} PROPERTIES SKIP_PRECOMPILE_HEADERS ON SKIP_UNITY_BUILD_INCLUSION ON)
target_link_libraries(orvane_pictures PRIVATE $<BUILD_INTERFACE:nlohmann_json::nlohmann_json>)
