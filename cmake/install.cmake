# SPDX-License-Identifier: Apache-2.0
install(TARGETS qfftf EXPORT qfftf-targets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES include/qfftf.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
