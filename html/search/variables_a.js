var searchData=
[
  ['vdisk_5finfo_5fvolume_5finfo_0',['VDISK_INFO_VOLUME_INFO',['../classVFoundation_1_1VDiskInfo.html#abef1b4df34c43e53e2145d4aea961677',1,'VFoundation::VDiskInfo']]],
  ['vdisk_5finfo_5fvolume_5fnames_1',['VDISK_INFO_VOLUME_NAMES',['../classVFoundation_1_1VDiskInfo.html#aee2612ce2e0fed8daf142afb75851ebf',1,'VFoundation::VDiskInfo']]]
];
