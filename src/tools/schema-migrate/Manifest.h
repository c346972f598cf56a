// What a written directory was made from, and what it holds.
#ifndef SCHEMA_MIGRATE_MANIFEST_H_
#define SCHEMA_MIGRATE_MANIFEST_H_

#include <filesystem>
#include <string>
#include <vector>

// The file in a written directory. No schema reader looks at it.
constexpr char kManifestName[] = "schema-migrate.manifest";

// The text of a manifest is
//
//   # schema-migrate VERSION, manifest 1
//   # check the files below with: sha256sum -c schema-migrate.manifest
//   #
//   # old installation: /srv/old/schema
//   #   SUM  V3.user.at
//   #   ...
//   # new release: ...
//   # excluded OIDs: /srv/excluded-oids.txt
//   #   SUM  excluded-oids.txt
//   #
//   # plan:
//   #   ...
//   SUM  V3.config.at
//   SUM  V3.user.at
//
// The sums are of SHA-256, the files in the order of their names, and the paths
// absolute. There is no time in it: the same files give the same manifest.
class Manifest {
 public:
  // To be called before the inputs are read. What cannot be read has no sum.
  // `what`: "old installation", for instance.
  void addDirectory(const std::string &what,
                    const std::filesystem::path &directory);
  void addFile(const std::string &what, const std::filesystem::path &file);

  // Throws Trouble when an input is no longer as it was when it was added.
  void requireUnchanged() const;

  // The text for the directory, of whose files, and those of the directories in
  // it, the sums are taken; the manifest itself is left out. `plan`: what the
  // migration is about, in lines; left out if it is empty. Throws Trouble when
  // a file cannot be read.
  std::string text(const std::string &plan,
                   const std::filesystem::path &directory) const;

 private:
  struct Sum {
    std::filesystem::path path;
    std::string sum;  // empty: there is no such file, or it cannot be read
  };
  struct Input {
    std::string what;
    std::filesystem::path path;
    std::vector<Sum> files;
  };

  std::vector<Input> m_inputs;
};

#endif  // SCHEMA_MIGRATE_MANIFEST_H_
