# The files' list of the assemble script as a bill of materials.
def rows: split("\n") | map(select(. != ""));

($licences | rows | map(capture("^(?<key>[^ ]+) (?<value>.+)")) | from_entries) as $licence
| "pkg:generic/\($name)@\($version)" as $self
| rows
| map(split("\t") | {file: .[0], sum: .[1], package: .[2], version: .[3], source: .[4], source_version: .[5]})
| group_by(.package)
| map(.[0] as $first
    | "pkg:deb/debian/\($first.package)@\($first.version | @uri)?arch=\($architecture)&distro=\($distribution)" as $purl
    | {
        type: "library",
        "bom-ref": $purl,
        supplier: {name: "Debian"},
        name: $first.package,
        version: $first.version,
        licenses: [{expression: $licence[$first.source]}],
        purl: $purl,
        externalReferences: [{
            type: "distribution",
            comment: "source",
            url: "https://snapshot.debian.org/package/\($first.source)/\($first.source_version)/"
        }],
        components: map({type: "file", name: .file, hashes: [{alg: "SHA-256", content: .sum}]})
    })
| {
    bomFormat: "CycloneDX",
    specVersion: "1.5",
    version: 1,
    metadata: {
        timestamp: $time,
        component: {
            type: "application",
            "bom-ref": $self,
            supplier: {name: "Brindlecove"},
            name: $name,
            version: $version,
            licenses: [{license: {name: "LicenseRef-proprietary"}}],
            purl: $self
        }
    },
    components: .,
    dependencies: [{ref: $self, dependsOn: map(.["bom-ref"])}]
}
