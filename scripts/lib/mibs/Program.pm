# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
package Program;

# A program around the generated code of a MIB: it gives each scalar a value and
# each table two rows, serves them, and sends each notification when it reads a
# line.
use strict;
use warnings;
use Values;

sub text {
  my ($mib) = @_;
  return join "\n",
    "#include \"$mib->{name}.h\"", '', '#include <chrono>', '#include <iostream>', '#include <string>', '#include <thread>', '',
    "using namespace $mib->{namespace};", '',
    'namespace {', '',
    (map { _scalarFunction($mib->{scalars}) } 1),
    (map { _rows($_) } grep { !$_->{shares} } @{$mib->{tables}}),
    (map { _notification($_) } @{$mib->{notifications}}),
    '}  // namespace', '',
    'int main(int, char* argv[]) {',
    '  snmp::AgentOptions options;',
    '  options.master = argv[1];',
    '  snmp::Agent agent("mibs", options);',
    '  Objects objects(agent);',
    '  FillScalars(objects);',
    (map { "  Fill$_->{alias}(objects);" } grep { !$_->{shares} } @{$mib->{tables}}),
    '  agent.Start();',
    '  while (!objects.module.IsRegistered()) {',
    '    std::this_thread::sleep_for(std::chrono::milliseconds(5));',
    '    if (!agent.Refusals().empty()) return 1;',
    '  }',
    '  std::cout << "ready" << std::endl;',
    '  for (std::string line; std::getline(std::cin, line);) {',
    (map { "    Try$_->{send}(objects);" } @{$mib->{notifications}}),
    '    std::cout << "sent" << std::endl;',
    '  }',
    '}', '';
}

sub _scalarFunction {
  my ($scalars) = @_;
  return ('void FillScalars(' . (@$scalars ? 'Objects& objects' : 'Objects&') . ') {',
    (map { "  objects.$_->{name}.Set(" . Values::value($_, 0) . ');' } @$scalars),
    '}', '');
}

sub _rows {
  my ($table) = @_;
  return ("void Fill$table->{alias}(Objects& objects) {",
    "  $table->{row} row;",
    (map {
      (map { "  $_" } Values::row($table, $_)),
      "  objects.$table->{name}.Insert(" . Values::key($table->{key}, $_) . ', row);'
    } 0, 1),
    '}', '');
}

sub _notification {
  my ($notification) = @_;
  my (@made, @names);
  foreach my $parameter (@{$notification->{parameters}}) {
    push @names, $parameter->{name};
    my $of = $parameter->{of};
    if ($of->{row}) {
      push @made, "  $of->{row} $parameter->{name};",
        map { "  {\n    auto& row = $parameter->{name};\n    row.$_->{name} = "
          . Values::value($_, 0) . ";\n  }" } @{$of->{fields} || []};
    } elsif ($of->{parts}) {
      push @made, "  const $parameter->{cpp} $parameter->{name} = "
        . Values::key($of, 0) . ';';
    } else {
      push @made, "  const $parameter->{cpp} $parameter->{name} = "
        . Values::value($of, 0) . ';';
    }
  }
  return ("void Try$notification->{send}(Objects& objects) {", @made,
    "  objects.$notification->{send}(" . join(', ', @names) . ');', '}', '');
}

1;
