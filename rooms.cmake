# The rooms of src/, a line a floor, from the ground up; tests/ and bench/ mirror them. A room stands on the
# floors below it and knows neither its neighbours nor what is above: src/CMakeLists.txt refuses a link that
# leads sideways or upwards, tests/house/ an include.
set(CORVANTINE_FLOORS
  "frame/record"
  "frame/log frame/settings"
  "driver controls"
  "frame/helpers frame/discovery"
  "acquisition display export skin about"
  "channels analysis"
  "frame/window"
  "frame/instrument"
  "frame/session")
string(REPLACE " " ";" CORVANTINE_ROOMS "${CORVANTINE_FLOORS}")

# The floor of a room, counted from 0 at the ground.
function(corvantine_floor_of room result)
  set(floor 0)
  foreach(rooms ${CORVANTINE_FLOORS})
    string(REPLACE " " ";" rooms ${rooms})
    if(room IN_LIST rooms)
      set(${result} ${floor} PARENT_SCOPE)
      return()
    endif()
    math(EXPR floor "${floor} + 1")
  endforeach()
  message(FATAL_ERROR "${room} stands on no floor of rooms.cmake")
endfunction()
