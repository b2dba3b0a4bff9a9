print('no document needed');
