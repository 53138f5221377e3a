find_package(PkgConfig REQUIRED)
pkg_check_modules(XML_PEERS REQUIRED IMPORTED_TARGET tinyxml pugixml)
vfoundation_benchmark(XMLFile LIBRARIES PkgConfig::XML_PEERS)
