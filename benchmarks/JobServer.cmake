find_package(TBB REQUIRED)
vfoundation_benchmark(JobServer LIBRARIES TBB::tbb)
