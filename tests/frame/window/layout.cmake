# The tables of all forms, the skins that were painted for them, and a program that shows them.
add_library(corvantine_all_forms STATIC all_forms.cpp)
target_include_directories(corvantine_all_forms PUBLIC ${PROJECT_SOURCE_DIR}/tests)
target_link_libraries(corvantine_all_forms PUBLIC corvantine_window_design corvantine_channels_design
  corvantine_display_design corvantine_acquisition_design corvantine_export_design corvantine_about_design
  corvantine_analysis_design corvantine_layout_json corvantine_skin)

corvantine_test(layout SOURCES artwork_test.cpp form_test.cpp layout_test.cpp layout_texts_test.cpp LINKS corvantine_all_forms)
target_compile_definitions(layout_tests PRIVATE CORVANTINE_SOURCE_DIR="${PROJECT_SOURCE_DIR}")

# Pictures of every form for the eye; not a test.
add_executable(corvantine_form_shots form_shots.cpp)
target_link_libraries(corvantine_form_shots PRIVATE corvantine_all_forms Qt6::Test)
corvantine_eye(corvantine_form_shots)
