# The look rows and editors share (ParameterLook: fonts and type icons, the library's own) and the type
# icon collection: PNG files drawn by make_icons.py, compiled in by AUTORCC. The collection is
# registered in the first resource format, which has no file timestamps: the compiled data then depend
# only on the icons, not on when the files were checked out.
list(APPEND VORN_QT4_SOURCES resources/ParameterLook.cpp resources/ParameterLook.h resources/parameters.qrc)
set_source_files_properties(${PROJECT_SOURCE_DIR}/resources/parameters.qrc
  PROPERTIES AUTORCC_OPTIONS "--format-version;1")
