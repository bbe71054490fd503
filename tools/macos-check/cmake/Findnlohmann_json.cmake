# A library of headers, shown apart from the system's own.
if(NOT TARGET nlohmann_json::nlohmann_json)
  add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED GLOBAL)
  target_include_directories(nlohmann_json::nlohmann_json INTERFACE ${VELLMOOR_MACOS_SDK}/others)
endif()
set(nlohmann_json_FOUND TRUE)
