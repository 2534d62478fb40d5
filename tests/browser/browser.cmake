# Opens pages in a headless Chromium; skipped where there is none. Included by tests/CMakeLists.txt.

find_package(nlohmann_json REQUIRED)
add_executable(write_pages browser/write_pages.cpp browser/building.cpp)
target_include_directories(write_pages PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(write_pages PRIVATE orvane::pictures nlohmann_json::nlohmann_json)
add_test(NAME browser
    COMMAND Python3::Interpreter ${CMAKE_CURRENT_SOURCE_DIR}/browser/play_test.py
        $<TARGET_FILE:write_pages> ${CMAKE_CURRENT_BINARY_DIR}/pages)
set_tests_properties(browser PROPERTIES TIMEOUT 300 SKIP_RETURN_CODE 77)
