# Run at every installation, for what depends on its prefix: the prefix is chosen only then.
cmake_path(ABSOLUTE_PATH bin_folder BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX})
cmake_path(ABSOLUTE_PATH data_folder BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX})
set(program ${bin_folder}/wrenfold)
if(NOT program MATCHES "^[A-Za-z0-9/._+@:-]+$")
  if(program MATCHES "[\"`$\\%]")
    message(FATAL_ERROR "Desktop entries cannot name a program below ${CMAKE_INSTALL_PREFIX}")
  endif()
  set(program "\"${program}\"")
endif()

# By its whole path: the program's folder is not always among those that the desktop searches.
file(READ ${source}/dev.tolvane.Wrenfold.desktop entry)
string(REPLACE "Exec=wrenfold" "Exec=${program}" entry "${entry}")
file(WRITE ${binary}/dev.tolvane.Wrenfold.desktop "${entry}")
file(INSTALL ${binary}/dev.tolvane.Wrenfold.desktop DESTINATION ${data_folder}/applications)

file(WRITE ${binary}/dev.tolvane.Wrenfold.service
"[D-BUS Service]
Name=dev.tolvane.Wrenfold
Exec=${program} --dbus-service
")
file(INSTALL ${binary}/dev.tolvane.Wrenfold.service DESTINATION ${data_folder}/dbus-1/services)

# Debian has a name of its own for where packages leave what zsh reads, and wants a change log of the package.
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr" AND EXISTS /etc/debian_version)
  file(INSTALL ${source}/_wrenfold DESTINATION ${data_folder}/zsh/vendor-completions)
  file(INSTALL ${binary}/changelog.Debian.gz DESTINATION ${data_folder}/doc/wrenfold)
else()
  file(INSTALL ${source}/_wrenfold DESTINATION ${data_folder}/zsh/site-functions)
endif()
