find_package(Boost REQUIRED)
vfoundation_benchmark(RingBuffer LIBRARIES Boost::headers)
