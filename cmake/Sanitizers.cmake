# VELLMOOR_SANITIZE: a list for -fsanitize, such as "address,undefined" or "thread".
set(VELLMOOR_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize takes them")
if(VELLMOOR_SANITIZE)
  add_compile_options(-fsanitize=${VELLMOOR_SANITIZE} -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${VELLMOOR_SANITIZE})
  if(VELLMOOR_SANITIZE MATCHES "undefined")
    add_compile_options(-fno-sanitize-recover=undefined)
  endif()
endif()
