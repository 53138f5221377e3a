var indexSectionsWithContent =
{
  0: "abcdefghijklmnopqrstuvwxy~",
  1: "bchirstvx",
  2: "v",
  3: "abcfhimnoprstvx",
  4: "abcdefghijklmnopqrstuvwxy~",
  5: "abghklmnrtvwxy",
  6: "bcefhnrtv",
  7: "ers",
  8: "ekv",
  9: "v",
  10: "acdostvw",
  11: "v"
};

var indexSectionNames =
{
  0: "all",
  1: "classes",
  2: "namespaces",
  3: "files",
  4: "functions",
  5: "variables",
  6: "typedefs",
  7: "enums",
  8: "enumvalues",
  9: "defines",
  10: "pages",
  11: "concepts"
};

var indexSectionLabels =
{
  0: "All",
  1: "Classes",
  2: "Namespaces",
  3: "Files",
  4: "Functions",
  5: "Variables",
  6: "Typedefs",
  7: "Enumerations",
  8: "Enumerator",
  9: "Macros",
  10: "Pages",
  11: "Concepts"
};

